// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PciNames.h"

// A header for C alone.
extern "C" {
#include <pci/pci.h>
}

#include <array>
#include <csetjmp>
#include <filesystem>
#include <system_error>

namespace QZ {

namespace {

// libpci ends the process where it meets an error, a mistake in its list for instance, unless its
// caller keeps it from that, who must not return either. Its frames may have no unwind information.
thread_local std::jmp_buf _failed;

// NOLINTNEXTLINE(cert-dcl50-cpp): as libpci calls it
__attribute__((noreturn)) void _fail(char*, ...) {
    std::longjmp(_failed, 1);  // NOLINT(cert-err52-cpp)
}

// NOLINTNEXTLINE(cert-dcl50-cpp): as libpci calls it
void _ignore(char*, ...) {}

// Null where the list does not say, or says it wrong: then isBroken. No object may live here that
// has to be destroyed.
const char* _lookup(pci_access* access, char* buffer, int size, int what, const PciNumbers& numbers,
                    bool& isBroken) {
    if (setjmp(_failed) != 0) {  // NOLINT(cert-err52-cpp)
        isBroken = true;
        return nullptr;
    }
    const int flags = what | PCI_LOOKUP_NO_NUMBERS | PCI_LOOKUP_NO_HWDB;
    const auto vendor = int(numbers.vendor);
    if ((flags & PCI_LOOKUP_DEVICE) == 0)
        return pci_lookup_name(access, buffer, size, flags, vendor);
    const auto device = int(numbers.device);
    if ((flags & PCI_LOOKUP_SUBSYSTEM) == 0)
        return pci_lookup_name(access, buffer, size, flags, vendor, device);
    return pci_lookup_name(access, buffer, size, flags, vendor, device,
                           int(numbers.subsystemVendor), int(numbers.subsystemDevice));
}

}  // namespace

PciNames::PciNames(const std::string& file) : _file(file), _access(pci_alloc()) {
    _access->error = _fail;
    _access->warning = _ignore;
    _access->debug = _ignore;
    std::error_code error;
    // It keeps the pointer, and writes nothing there.
    if (std::filesystem::exists(_file, error))
        pci_set_name_list_path(_access.get(), _file.data(), 0);
}

void PciNames::Close::operator()(pci_access* access) const {
    pci_cleanup(access);
}

std::string PciNames::_lookup(int what, const PciNumbers& numbers) {
    if (_isBroken)
        return {};
    std::array<char, 1024> buffer{};
    const char* const name =
        QZ::_lookup(_access.get(), buffer.data(), int(buffer.size()), what, numbers, _isBroken);
    return name != nullptr ? name : "";
}

std::string PciNames::vendor(unsigned vendor) {
    return _lookup(PCI_LOOKUP_VENDOR, {vendor, 0, 0, 0});
}

std::string PciNames::device(const PciNumbers& numbers) {
    return _lookup(PCI_LOOKUP_DEVICE, numbers);
}

std::string PciNames::subsystem(const PciNumbers& numbers) {
    return _lookup(PCI_LOOKUP_DEVICE | PCI_LOOKUP_SUBSYSTEM, numbers);
}

}  // namespace QZ
