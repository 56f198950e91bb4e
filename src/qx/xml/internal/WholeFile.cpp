// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/internal/WholeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "qx/xml/internal/Xerces.h"

namespace qx::internal {

namespace {

/// Where a link leads, also one that leads to a file that is to come.
std::string behindLinks(const std::string& path) {
    std::error_code error;
    const std::filesystem::path real = std::filesystem::weakly_canonical(path, error);
    return error ? path : real.string();
}

}  // namespace

WholeFile::WholeFile(const std::string& path) : m_path(behindLinks(path)) {
    struct stat status {};
    const bool exists = ::stat(m_path.c_str(), &status) == 0;
    if (exists && !S_ISREG(status.st_mode)) {
        m_descriptor = ::open(m_path.c_str(), O_WRONLY | O_CLOEXEC);
        if (m_descriptor < 0) {
            fail();
        }
        return;
    }
    if (exists && ::access(m_path.c_str(), W_OK) != 0) {
        fail();  // renaming would not ask
    }
    m_temporary = m_path + ".XXXXXX";
    m_descriptor = ::mkostemp(m_temporary.data(), O_CLOEXEC);
    if (m_descriptor < 0) {
        m_temporary.clear();
        fail();
    }
    keepPermissions(exists, status.st_mode, status.st_uid, status.st_gid);
}

WholeFile::~WholeFile() {
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
    if (!m_temporary.empty()) {
        ::unlink(m_temporary.c_str());
    }
}

void WholeFile::fail() const {
    throw DocumentFault(m_path + ": " + std::strerror(errno));
}

void WholeFile::keepPermissions(bool exists, unsigned mode, unsigned owner, unsigned group) const {
    if (exists) {
        // Only who may do so gives files away; the others keep what they can.
        if (::fchown(m_descriptor, owner, group) != 0 &&
            ::fchown(m_descriptor, static_cast<uid_t>(-1), group) != 0) {
            errno = 0;
        }
        ::fchmod(m_descriptor, mode & 07777);
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        ::fchmod(m_descriptor, 0666 & ~mask);
    }
}

void WholeFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(m_descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            fail();
        }
        bytes.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
}

void WholeFile::commit() {
    if (::fsync(m_descriptor) != 0 && errno != EINVAL && errno != EROFS) {
        fail();
    }
    const int descriptor = m_descriptor;
    m_descriptor = -1;
    if (::close(descriptor) != 0) {
        fail();
    }
    if (!m_temporary.empty()) {
        if (::rename(m_temporary.c_str(), m_path.c_str()) != 0) {
            fail();
        }
        m_temporary.clear();
        flushFolder();
    }
}

/// So that the new name outlives a failure of power, too; the file is whole in any case.
void WholeFile::flushFolder() const {
    const std::filesystem::path folder = std::filesystem::path(m_path).parent_path();
    const int descriptor =
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

std::string readWholeFile(const std::string& path, std::size_t limit) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        throw DocumentFault(path + ": " + std::strerror(errno));
    }
    std::string bytes;
    struct stat status {};
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
        bytes.reserve(std::min(static_cast<std::size_t>(status.st_size), limit) + 1);
    }
    constexpr std::size_t Piece = 1 << 20;
    ssize_t got = 1;
    while (got != 0 && bytes.size() <= limit) {
        const std::size_t before = bytes.size();
        bytes.resize(before + Piece);
        got = ::read(descriptor, bytes.data() + before, Piece);
        if (got < 0 && errno != EINTR) {
            const int error = errno;
            ::close(descriptor);
            throw DocumentFault(path + ": " + std::strerror(error));
        }
        bytes.resize(before + static_cast<std::size_t>(got > 0 ? got : 0));
    }
    ::close(descriptor);
    if (bytes.size() > limit) {
        throw DocumentFault(path + ": more than " + std::to_string(limit) + " bytes");
    }
    return bytes;
}

}  // namespace qx::internal
