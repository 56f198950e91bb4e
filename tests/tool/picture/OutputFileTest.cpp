// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "picture/OutputFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "picture/PictureError.h"
#include "tool/support/TemporaryFolder.h"

namespace qxdraw {
namespace {

namespace fs = std::filesystem;
using testing::contentOf;
using testing::TemporaryFolder;

TEST(OutputFile, ReplacesAFileAsAWhole) {
    const TemporaryFolder folder;
    writeOutputFile(folder / "a.svg", "first");
    writeOutputFile(folder / "a.svg", "second");
    EXPECT_EQ(contentOf(folder / "a.svg"), "second");
    EXPECT_EQ(folder.numberOfFiles(), 1);
}

TEST(OutputFile, WritesThroughALink) {
    const TemporaryFolder folder;
    writeOutputFile(folder / "real.svg", "first");
    fs::create_symlink(folder / "real.svg", folder / "link.svg");
    writeOutputFile(folder / "link.svg", "second");
    EXPECT_TRUE(fs::is_symlink(folder / "link.svg"));
    EXPECT_EQ(contentOf(folder / "real.svg"), "second");
}

TEST(OutputFile, LeavesNothingBehindWhenItFails) {
    const TemporaryFolder folder;
    EXPECT_THROW(writeOutputFile(folder / "none/a.svg", "text"), PictureError);
    fs::create_directory(folder / "folder.svg");
    EXPECT_THROW(writeOutputFile(folder / "folder.svg", "text"), PictureError);
    EXPECT_EQ(folder.numberOfFiles(), 1);
}

TEST(OutputFile, NoticesAFullDisk) {
    const TemporaryFolder folder;
    fs::create_symlink("/dev/full", folder / "full.svg");
    EXPECT_THROW(writeOutputFile(folder / "full.svg", "text"), PictureError);
    EXPECT_TRUE(fs::is_symlink(folder / "full.svg")) << "the device is not replaced";
}

unsigned permissionsOf(const fs::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
}

TEST(OutputFile, GetsThePermissionsOfWhatItReplacesOrThoseOfNewFiles) {
    const TemporaryFolder folder;
    const mode_t before = ::umask(027);
    writeOutputFile(folder / "a.svg", "text");
    ::umask(before);
    EXPECT_EQ(permissionsOf(folder / "a.svg"), 0640U);
    fs::permissions(folder / "a.svg", fs::perms(0604));
    writeOutputFile(folder / "a.svg", "other text");
    EXPECT_EQ(permissionsOf(folder / "a.svg"), 0604U);
}

TEST(OutputFile, LeavesFilesOfTwoNamesAlone) {
    const TemporaryFolder folder;
    writeOutputFile(folder / "a.svg", "text");
    fs::create_symlink("a.svg", folder / "link.svg");
    writeOutputFile(folder / "b.svg", "text");
    EXPECT_TRUE(isSameFile(folder / "a.svg", folder / "link.svg"));
    EXPECT_FALSE(isSameFile(folder / "a.svg", folder / "b.svg"));
    fs::create_hard_link(folder / "a.svg", folder / "twin.svg");
    EXPECT_TRUE(isSameFile(folder / "a.svg", folder / "twin.svg"));
    EXPECT_THROW(writeOutputFile(folder / "twin.svg", "new"), PictureError);
    EXPECT_EQ(contentOf(folder / "a.svg"), "text");
}

}  // namespace
}  // namespace qxdraw
