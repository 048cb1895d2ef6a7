// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

// Marks what a library shows to others; everything else is hidden.
#define TAVQZ_EXPORT __attribute__((visibility("default")))
