#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/blobs.h"
#include "support/failures.h"

using Mirvane::CBlob;
using test::thrownCode;

namespace {

// A folder of its own for each test, with a name that is not ASCII.
class BlobFile : public testing::Test {
  protected:
    void SetUp() override {
        const auto name =
            std::string("mirvane-\xC3\xA9-") + testing::UnitTest::GetInstance()->current_test_info()->name();
        folder_ = std::filesystem::temp_directory_path() / (name + std::to_string(getpid()));
        std::filesystem::create_directory(folder_);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::string path(const char* name) const { return (folder_ / name).string(); }

    std::string write(const std::string& content) const {
        std::ofstream(path("file"), std::ios::binary) << content;
        return path("file");
    }

    std::filesystem::path folder_;
};

}  // namespace

TEST_F(BlobFile, WhatIsWrittenIsReadAgain) {
    CBlob blob(100'000);
    for (unsigned long i = 0; i < blob.cbData(); ++i)
        blob.pbData()[i] = static_cast<unsigned char>(i * 7);
    blob.writeToFile(path("new").c_str());
    CBlob read(3);
    read.readFromFile(path("new").c_str());
    EXPECT_TRUE(read == blob);
}

TEST_F(BlobFile, WritingReplacesALongerFile) {
    const std::string file = write("something long");
    for (const unsigned long size : {1, 0}) {
        CBlob(size).writeToFile(file.c_str());
        EXPECT_EQ(std::filesystem::file_size(file), size);
    }
}

TEST_F(BlobFile, WideNamesGoThroughTheCodePage) {
    const std::u32string characters = std::filesystem::path(path("file")).u32string();
    const std::wstring name(characters.begin(), characters.end());
    const CBlob written = test::blob("61 62");
    written.writeToFile(name.c_str());
    EXPECT_TRUE(std::filesystem::exists(path("file")));
    CBlob read;
    read.readFromFile(name.c_str());
    EXPECT_TRUE(read == written);
}

TEST_F(BlobFile, AnEmptyFileGivesNoBytesAndNoArray) {
    CBlob blob(4);
    blob.readFromFile(write("").c_str());
    EXPECT_EQ(blob.cbData(), 0u);
    EXPECT_EQ(blob.pbData(), nullptr);
}

TEST_F(BlobFile, WhatCannotBeOpenedIsToldAndEmptiesTheBlob) {
    const std::string missing = path("missing"), folder = folder_.string();
    CBlob blob(4);
    for (const char* name : test::texts(missing.c_str(), "", nullptr))
        EXPECT_EQ(thrownCode([&] { blob.readFromFile(name); }), 0x80070002u);
    EXPECT_EQ(blob.cbData(), 0u);
    EXPECT_NE(blob.pbData(), nullptr) << "the array survives";
    for (const char* name : test::texts(folder.c_str(), nullptr))
        EXPECT_EQ(thrownCode([&] { blob.writeToFile(name); }), 0x80070002u);
    for (const wchar_t* name : {L"/nonexistent-folder/x", static_cast<const wchar_t*>(nullptr)}) {
        EXPECT_EQ(thrownCode([&] { blob.readFromFile(name); }), 0x80070002u);
        EXPECT_EQ(thrownCode([&] { blob.writeToFile(name); }), 0x80070002u);
    }
}

TEST_F(BlobFile, WhatHasNoSizeIsNotRead) {
    CBlob blob(4);
    EXPECT_EQ(thrownCode([&] { blob.readFromFile(folder_.c_str()); }), 0x80070570u);
    EXPECT_EQ(blob.cbData(), 0u);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const std::string name = "/dev/fd/" + std::to_string(ends[0]);
    EXPECT_EQ(thrownCode([&] { blob.readFromFile(name.c_str()); }), 0x80070570u);
    close(ends[0]);
    close(ends[1]);
}

TEST_F(BlobFile, AFullDiskGoesUnreported) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full here";
    EXPECT_EQ(thrownCode([] { CBlob(100'000).writeToFile("/dev/full"); }), 0u);
}
