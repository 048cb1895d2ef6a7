// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace QZ {

// Makes a key and a certificate that it has signed itself, for a server whose site has none yet:
// X.509, ECDSA with P-256, for names and addresses (subjectAltName), from a day ago for ten years,
// so that a clock that is a little wrong does no harm. Both files are PEM and their owner's only;
// the key's is written first. Throws Error.
void makeOwnCertificate(const std::string& certificateFile, const std::string& keyFile,
                        const std::vector<std::string>& names);

// Whether the file is a certificate that makeOwnCertificate made, and is not for all these names. A
// site's own, or what is no certificate, is none of ours to replace.
bool isOwnForOthers(const std::string& certificateFile, const std::vector<std::string>& names);

// What this machine may be asked under: its name, first, also without its domain, localhost, and
// the addresses of loopback.
std::vector<std::string> namesOfThisMachine();

// The addresses that its network cards have now.
std::vector<std::string> addressesOfThisMachine();

}  // namespace QZ
