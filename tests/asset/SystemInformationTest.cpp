// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>

#include "ComputerSystemDetails.h"
#include "SmBiosBuilder.h"
#include "TestMachine.h"

namespace QZ {
namespace {

constexpr unsigned char _systemInformation = 1;

SmBiosBuilder _builder() {
    return {SmBiosBuilder::EntryPoint::Version3, 3, 4};
}

SmBiosStructure& _addSystem(SmBiosBuilder& builder, const std::string& product,
                            const std::string& serial) {
    SmBiosStructure& system = builder.add(_systemInformation, 27);
    if (!product.empty()) {
        system.text(5, product);
    }
    if (!serial.empty()) {
        system.text(7, serial);
    }
    return system;
}

TEST(SystemInformation, IsEmptyOnAMachineWithoutFirmwareTables) {
    const TestMachine machine;
    const ComputerSystemDetails details;
    EXPECT_EQ(details.getSystemSerialNumber(), "");
    EXPECT_EQ(details.getProductName(), "");
    EXPECT_EQ(details.getSystemModelNumber(), "");
    EXPECT_EQ(details.getSystemModelName(), "");
    EXPECT_EQ(details.getSystemUuid(), "");
}

TEST(SystemInformation, SplitsTheProductName) {
    const TestMachine machine;
    SmBiosBuilder builder = _builder();
    _addSystem(builder, "Example Server -[7915AC1]-", "S1");
    builder.addEnd().writeBelow(machine.folder().path());
    const ComputerSystemDetails details;
    EXPECT_EQ(details.getSystemSerialNumber(), "S1");
    EXPECT_EQ(details.getSystemModelNumber(), "7915AC1");
    EXPECT_EQ(details.getSystemModelName(), "Example Server");
    EXPECT_EQ(details.getProductName(), "Example Server");
}

TEST(SystemInformation, TakesTheWholeNameForANumberWhereThereIsNone) {
    const TestMachine machine;
    SmBiosBuilder builder = _builder();
    _addSystem(builder, " Plain Server ", "");
    builder.addEnd().writeBelow(machine.folder().path());
    EXPECT_EQ(ComputerSystemDetails().getSystemModelNumber(), "Plain Server");
    EXPECT_EQ(ComputerSystemDetails().getSystemSerialNumber(), "");
}

TEST(SystemInformation, LooksAtTheFirstSystemOnly) {
    const TestMachine machine;
    SmBiosBuilder builder = _builder();
    _addSystem(builder, "First", "1");
    _addSystem(builder, "Second", "2");
    builder.addEnd().writeBelow(machine.folder().path());
    EXPECT_EQ(ComputerSystemDetails().getSystemSerialNumber(), "1");
    EXPECT_EQ(ComputerSystemDetails().getProductName(), "First");
}

TEST(SystemInformation, CountsStructuresInEightBitsForTheProductName) {
    // 256 structures count as none, 257 as one; the serial number is found all the same.
    for (const unsigned others : {254U, 255U, 256U}) {
        const TestMachine machine;
        SmBiosBuilder builder = _builder();
        _addSystem(builder, "Server", "S1");
        for (unsigned i = 0; i < others; ++i) {
            builder.add(11, 5);
        }
        builder.writeBelow(machine.folder().path());
        const ComputerSystemDetails details;
        EXPECT_EQ(details.getProductName(), others == 255 ? "" : "Server") << others;
        EXPECT_EQ(details.getSystemSerialNumber(), "S1") << others;
        EXPECT_EQ(details.getSystemModelNumber(), "Server") << others;
    }
}

TEST(SystemInformation, ShowsTheUuidInTheTablesOrder) {
    const TestMachine machine;
    SmBiosBuilder builder = _builder();
    _addSystem(builder, "", "").bytes(8, "\x01\x23\x45\x67\x89\xAB\xCD\xEF 1234567");
    builder.addEnd().writeBelow(machine.folder().path());
    EXPECT_EQ(ComputerSystemDetails().getSystemUuid(), "01234567-89AB-CDEF-2031-323334353637");
}

TEST(SystemInformation, HasNoUuidInAStructureThatIsTooShort) {
    const TestMachine machine;
    SmBiosBuilder builder = _builder();
    SmBiosStructure& system = builder.add(_systemInformation, 23);
    system.bytes(8, std::string(15, 'x'));
    builder.addEnd().writeBelow(machine.folder().path());
    EXPECT_EQ(ComputerSystemDetails().getSystemUuid(), "");
}

TEST(SystemInformation, TakesAUuidOfOneRepeatedByteForNone) {
    for (const char byte : {'\x00', '\xFF'}) {
        const TestMachine machine;
        SmBiosBuilder builder = _builder();
        _addSystem(builder, "", "").bytes(8, std::string(16, byte));
        builder.addEnd().writeBelow(machine.folder().path());
        EXPECT_EQ(ComputerSystemDetails().getSystemUuid(), "");
    }
}

}  // namespace
}  // namespace QZ
