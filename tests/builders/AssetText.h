// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

// The content of a machine's asset.dat. Every key is there, in the form in which a save writes it,
// so that a report on a test machine leaves its file as it is.

// An owner, a lease and a warranty.
std::string filledAsset();

// As saved on a machine on which nobody has entered anything.
std::string emptyAsset();
