// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

struct pci_access;

namespace QZ {

// A PCI board by its numbers, and the one that its maker built it into.
struct PciNumbers {
    unsigned vendor = 0;
    unsigned device = 0;
    unsigned subsystemVendor = 0;
    unsigned subsystemDevice = 0;
};

// The names that the list of PCI numbers has for boards; empty for what it does not know. The list
// is read when a name is first asked for: no network and no other database is. Used by one thread
// at a time.
class PciNames {
public:
    // The list of that file; where there is none, the one of this machine's libpci.
    explicit PciNames(const std::string& file);

    std::string vendor(unsigned vendor);
    std::string device(const PciNumbers& numbers);
    std::string subsystem(const PciNumbers& numbers);

private:
    struct Close {
        void operator()(pci_access* access) const;
    };

    std::string _lookup(int what, const PciNumbers& numbers);

    std::string _file;
    std::unique_ptr<pci_access, Close> _access;
    bool _isBroken = false;
};

}  // namespace QZ
