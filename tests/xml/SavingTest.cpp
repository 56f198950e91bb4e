// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Saved files are whole, whatever happens.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "xml/DocumentWorld.h"

namespace {

namespace fs = std::filesystem;
using namespace qxtest;

std::string contentsOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream all;
    all << file.rdbuf();
    return all.str();
}

class Saving : public testing::Test {
protected:
    Saving() : folder(fs::temp_directory_path() / "qxdraw-saving-XXXXXX") {
        std::string name = folder.string();
        folder = ::mkdtemp(name.data());
    }
    ~Saving() override { fs::remove_all(folder); }

    Ref<QxDGraphManager> drawing(int nodes) {
        Ref<QxDGraphManager> manager(factory.newDGraphManager());
        QxDGraph* const graph = manager->addGraph(0);
        for (int i = 0; i < nodes; ++i) {
            graph->addNodeWithCoordinates(i, i, 10, 10, 1, 0);
        }
        return manager;
    }
    static int save(const QxDGraphManager& manager, const fs::path& path) {
        return QxDGraphManagerXMLWriter(path.c_str()).write(&manager);
    }

    QxFactory factory;
    fs::path folder;
};

TEST_F(Saving, KeepsPermissionsAndLinks) {
    const auto manager = drawing(3);
    const fs::path real = folder / "real.qxd";
    const fs::path link = folder / "link.qxd";
    std::ofstream(real) << "old";
    fs::permissions(real, fs::perms(0604));
    fs::create_symlink("real.qxd", link);
    EXPECT_EQ(save(*manager, link), 1);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(fs::status(real).permissions(), fs::perms(0604));
    EXPECT_EQ(contentsOf(real), documentOf(*manager));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 2);
}

TEST_F(Saving, FailsWithoutTraces) {
    const auto manager = drawing(3);
    EXPECT_EQ(save(*manager, folder / "none" / "file.qxd"), 0);
    EXPECT_EQ(save(*manager, folder), 0);
    EXPECT_EQ(save(*manager, "/dev/full"), 0);
    EXPECT_TRUE(fs::is_empty(folder));
    QxDGraphManagerXMLReader reader((folder / "none").c_str());
    EXPECT_EQ(reader.read(manager.get()), 0);
    EXPECT_FALSE(reader.messages().empty());
    std::string buffer = "as it was";
    EXPECT_EQ(QxDGraphManagerXMLWriter(&buffer, 0, 0).write(nullptr), 0);
    EXPECT_EQ(buffer, "as it was");
}

/// QX_TEST_KILLS says how often; 50 by default.
TEST_F(Saving, KilledInTheMiddleLeavesAWholeFile) {
    const char* const wanted = std::getenv("QX_TEST_KILLS");
    const int kills = wanted != nullptr ? std::atoi(wanted) : 50;
    const auto one = drawing(300);
    const auto other = drawing(400);
    const std::string first = documentOf(*one);
    const std::string second = documentOf(*other);
    const fs::path path = folder / "plan.qxd";
    ASSERT_EQ(save(*one, path), 1);
    TestRandom random(testSeed(5));
    int cut = 0;
    for (int i = 0; i < kills; ++i) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (;;) {
                save(*other, path);
                save(*one, path);
            }
        }
        ::usleep(static_cast<useconds_t>(500 + random.below(30000)));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const std::string found = contentsOf(path);
        ASSERT_TRUE(found == first || found == second) << "after kill " << i;
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.path() != path) {
                ++cut;
                fs::remove(entry.path());
            }
        }
    }
    EXPECT_GT(cut, 0) << "no save was cut in the middle";
}

}  // namespace
