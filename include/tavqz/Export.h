// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

// Marks what a library shows to others; everything else is hidden.
#define TAVQZ_EXPORT __attribute__((visibility("default")))
// Of a class that is shown, what stays hidden: what the compiler may inline or not.
#define TAVQZ_INTERNAL __attribute__((visibility("hidden")))
