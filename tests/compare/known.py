# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
"""Differences that stay: (pattern of the request's whole name, reason). docs/openpegasus.md tells
about them."""

import re

KNOWN = tuple((re.compile(pattern), reason) for pattern, reason in ())
