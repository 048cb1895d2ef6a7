// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/Exception.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

using namespace Pegasus;

TEST(Exception, SaysWhatIsWrong) {
    EXPECT_EQ(Exception("disk full").getMessage(), "disk full");
    EXPECT_EQ(InvalidNameException("1a").getMessage(), "not a CIM name: \"1a\"");
    EXPECT_EQ(TypeMismatchException("a reason").getMessage(), "type mismatch: a reason");
    EXPECT_EQ(AlreadyExistsException("Name").getMessage(), "already exists: Name");
}

TEST(Exception, CopiesTheMessage) {
    Exception copy("first");
    copy = Exception("second");
    EXPECT_EQ(Exception(copy).getMessage(), "second");
}

TEST(CIMException, CarriesStatusAndMessage) {
    const CIMException failed(CIM_ERR_FAILED, "asset.dat: disk full");
    EXPECT_EQ(failed.getCode(), CIM_ERR_FAILED);
    EXPECT_EQ(failed.getMessage(), "asset.dat: disk full");

    CIMException other;
    EXPECT_EQ(other.getCode(), CIM_ERR_SUCCESS);
    EXPECT_EQ(other.getMessage(), String::EMPTY);
    other = failed;
    EXPECT_EQ(other.getCode(), CIM_ERR_FAILED);
    EXPECT_EQ(other.getMessage(), "asset.dat: disk full");
}

TEST(CIMException, IsCaughtAsException) {
    try {
        throw CIMException(CIM_ERR_NOT_SUPPORTED, "createInstance");
    } catch (const Exception& e) {
        EXPECT_EQ(e.getMessage(), "createInstance");
        EXPECT_NE(dynamic_cast<const CIMException*>(&e), nullptr);
    }
}

TEST(CIMStatusCode, IsNamed) {
    EXPECT_STREQ(cimStatusCodeToString(CIM_ERR_SUCCESS), "CIM_ERR_SUCCESS");
    EXPECT_STREQ(cimStatusCodeToString(CIM_ERR_METHOD_NOT_FOUND), "CIM_ERR_METHOD_NOT_FOUND");
    EXPECT_STREQ(cimStatusCodeToString(CIM_ERR_SERVER_IS_SHUTTING_DOWN),
                 "CIM_ERR_SERVER_IS_SHUTTING_DOWN");
    EXPECT_EQ(int(CIM_ERR_NAMESPACE_NOT_EMPTY), 20);
    // Two numbers in the middle stand for nothing.
    EXPECT_STREQ(cimStatusCodeToString(CIMStatusCode(18)), "unknown CIM status code");
    EXPECT_STREQ(cimStatusCodeToString(CIMStatusCode(19)), "unknown CIM status code");
}

TEST(CIMType, IsNamed) {
    EXPECT_STREQ(cimTypeToString(CIMTYPE_BOOLEAN), "boolean");
    EXPECT_STREQ(cimTypeToString(CIMTYPE_UINT64), "uint64");
    EXPECT_STREQ(cimTypeToString(CIMTYPE_DATETIME), "datetime");
    EXPECT_STREQ(cimTypeToString(CIMTYPE_INSTANCE), "instance");
    EXPECT_STREQ(cimTypeToString(CIMType(17)), "unknown");
}

// A provider module is opened on its own; what it throws must still be the host's types.
class ExceptionFromModule : public testing::Test {
protected:
    ExceptionFromModule() : _module(dlopen(CIM_THROWER, RTLD_NOW | RTLD_LOCAL)) {
        if (_module)
            _throw = reinterpret_cast<void (*)(int)>(dlsym(_module, "throwException"));
    }
    // The module stays loaded: an exception may outlive the test.
    void SetUp() override { ASSERT_NE(_throw, nullptr); }

    void* _module;
    void (*_throw)(int) = nullptr;
};

TEST_F(ExceptionFromModule, IsCaughtByItsOwnType) {
    EXPECT_THROW(_throw(1), TypeMismatchException);
    EXPECT_THROW(_throw(2), InvalidNameException);
    EXPECT_THROW(_throw(3), IndexOutOfBoundsException);
}

TEST_F(ExceptionFromModule, KeepsStatusAndMessage) {
    try {
        _throw(0);
        FAIL() << "nothing was thrown";
    } catch (const CIMException& e) {
        EXPECT_EQ(e.getCode(), CIM_ERR_NOT_FOUND);
        EXPECT_EQ(e.getMessage(), "no such lease");
    }
}
