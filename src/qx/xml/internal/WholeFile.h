// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

namespace qx::internal {

/// A file that takes the place of another one as a whole: it is written beside that one under a
/// name of its own, flushed, and renamed. Whatever happens before the renaming, the old file is as
/// it was; unless the process is killed, nothing is left beside it. A symbolic link stays, and the
/// file behind it is replaced; so do permissions and, where that is allowed, the owner. What is no
/// regular file (a pipe, a device) is written as it is. Everything throws a DocumentFault.
class WholeFile {
public:
    explicit WholeFile(const std::string& path);
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    void write(std::string_view bytes);
    void commit();

private:
    [[noreturn]] void fail() const;
    void keepPermissions(bool exists, unsigned mode, unsigned owner, unsigned group) const;
    void flushFolder() const;

    std::string m_path;
    std::string m_temporary;  ///< empty when there is none
    int m_descriptor = -1;
};

/// All bytes of a file, or of what a pipe gives, unless they are more than `limit`.
std::string readWholeFile(const std::string& path, std::size_t limit);

}  // namespace qx::internal
