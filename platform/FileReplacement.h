// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// Puts a file with this content, readable by its owner only, in the place of what stands at path:
// written beside as PATH.new, flushed, renamed, folder flushed. Whoever reads sees the old file or
// the new, never a mixture, also after a crash. Throws Error with file and reason; the old file is
// then untouched and PATH.new gone, but for a failure of the last step, flushing the folder, after
// which the new file stands but may not outlive a power cut. Callers exclude one another.
void replaceFile(const std::string& path, const std::string& content);

}  // namespace QZ
