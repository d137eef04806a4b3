#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/stat.h>

#include "QAVFileServices.h"
#include "QAVListValQAVUnicodeString.h"
#include "QAVRbaImageServices.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

TEST(QAVFileServices, OddNamesWorkEverywhere) {
  qavtest::ScratchDir scratch;
  const std::string spaced = "with some spaces.jpg";
  const std::string utf8 = "\xc3\xa9t\xc3\xa9 \xe5\x9c\x96.hdr";
  const std::string longest(255, 'n');
  scratch.Write(spaced, "12345");
  scratch.Write(utf8, "x");
  scratch.Write(longest, "");
  fs::create_directory(scratch.path() / "sub dir \xc3\xa9");
  const QAVUnicodeString dir(scratch.str() + "/");  // no second separator is added

  QAVDirectory* reader = nullptr;
  ASSERT_EQ(QAVOpenDirectory(dir, reader), S_OK);
  std::vector<std::string> names;
  QAVUnicodeString name;
  HRESULT hr = S_OK;
  while ((hr = QAVReadDirectory(reader, name)) == S_OK)
    names.push_back(name.str());
  EXPECT_EQ(hr, S_FALSE);  // the end, not an error
  QAVCloseDirectory(reader);
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names,
            (std::vector<std::string>{".", "..", longest, "sub dir \xc3\xa9", spaced, utf8}));

  QAVStatInfo info;
  ASSERT_EQ(QAVGetFileInfo(QAVMakePath(dir, QAVUnicodeString(spaced)), info), S_OK);
  EXPECT_EQ(info.mode & QAV_S_IFMT, QAV_S_IFREG);
  EXPECT_EQ(info.size, 5);
  ASSERT_EQ(QAVGetFileInfo(QAVMakePath(dir, "sub dir \xc3\xa9"), info), S_OK);
  EXPECT_EQ(info.mode & QAV_S_IFMT, QAV_S_IFDIR);
  EXPECT_EQ(_QAVFileAccess(QAVMakePath(dir, QAVUnicodeString(longest)), QAV_ACCESS_READ, 0), 0);
  EXPECT_EQ(QAVMakePath(dir, "a"), QAVUnicodeString(scratch.str() + "/a"));

  const fs::path readOnly = scratch.Write("readonly", "x");
  ::chmod(readOnly.c_str(), 0444);
  ASSERT_EQ(QAVGetFileInfo(QAVUnicodeString(readOnly.string()), info), S_OK);
  EXPECT_EQ(info.mode, QAV_S_IFREG | 0444u);
}

TEST(QAVFileServices, MissingAndOddPathsFailCleanly) {
  qavtest::ScratchDir scratch;
  const QAVUnicodeString missing(scratch.str() + "/missing");
  QAVStatInfo info;
  info.mode = 0x1234;
  EXPECT_EQ(QAVGetFileInfo(missing, info), E_FAIL);
  EXPECT_EQ(info.mode, 0x1234u);  // untouched
  EXPECT_EQ(QAVGetFileInfo("", info), E_FAIL);
  // An embedded NUL would name another file ("/tmp"); too long a path fails.
  EXPECT_EQ(QAVGetFileInfo(QAVUnicodeString(std::string("/tmp\0x", 6)), info), E_FAIL);
  EXPECT_EQ(QAVGetFileInfo(QAVUnicodeString(std::string(5000, 'a')), info), E_FAIL);
  EXPECT_EQ(_QAVFileAccess(missing, 0, 0), -1);
  EXPECT_EQ(_QAVFileAccess(QAVUnicodeString(scratch.str() + "/" + std::string(256, 'n')), 0, 0),
            -1);

  QAVDirectory* dir = reinterpret_cast<QAVDirectory*>(&info);  // must be replaced
  EXPECT_EQ(QAVOpenDirectory(missing, dir), E_FAIL);
  EXPECT_EQ(dir, nullptr);
  const fs::path file = scratch.Write("plain.txt", "x");
  EXPECT_EQ(QAVOpenDirectory(QAVUnicodeString(file.string()), dir), E_FAIL);
  QAVUnicodeString name("kept");
  EXPECT_EQ(QAVReadDirectory(nullptr, name), E_FAIL);
  EXPECT_EQ(name, QAVUnicodeString("kept"));
  QAVCloseDirectory(nullptr);
}

TEST(QAVFileServices, MkdirAndTempDirectory) {
  qavtest::ScratchDir scratch;
  const std::string deep = scratch.str() + "/a b//\xc3\xa9/c";
  EXPECT_EQ(QAVMkdir(QAVUnicodeString(deep)), S_OK);
  EXPECT_TRUE(fs::is_directory(deep));
  EXPECT_EQ(QAVMkdir(QAVUnicodeString(deep + "/")), S_OK);  // already there
  scratch.Write("file", "x");
  EXPECT_EQ(QAVMkdir(QAVUnicodeString(scratch.str() + "/file")), E_FAIL);
  EXPECT_EQ(QAVMkdir(QAVUnicodeString(scratch.str() + "/file/below")), E_FAIL);

  {
    qavtest::ScopedEnv tmp("TMPDIR", "/var/tmp/qav//");
    EXPECT_EQ(QAVGetTempDirectory(), QAVUnicodeString("/var/tmp/qav"));
  }
  qavtest::ScopedEnv tmp("TMPDIR", "");
  EXPECT_EQ(QAVGetTempDirectory(), QAVUnicodeString("/tmp"));
}

TEST(QAVFileServices, PathListsSplitOnColonsDroppingEmptyEntries) {
  QAVListValQAVUnicodeString list;
  QAVRbaImageServices::ExtractPathList(":/a b::/\xc3\xa9:/a:", list);
  // Positions are 1-based; outside them an empty string.
  ASSERT_EQ(list.Size(), 3);
  EXPECT_EQ(list[1], QAVUnicodeString("/a b"));
  EXPECT_EQ(list[2], QAVUnicodeString("/\xc3\xa9"));
  EXPECT_TRUE(list[0].IsEmpty());
  EXPECT_TRUE(list[4].IsEmpty());
  EXPECT_EQ(list.Locate("/a"), 3);
  // The output is replaced, not extended.
  QAVRbaImageServices::ExtractPathList(":::", list);
  EXPECT_EQ(list.Size(), 0);
  list.Append("x");
  QAVRbaImageServices::ExtractPathList(nullptr, list);
  EXPECT_EQ(list.Size(), 0);
}

TEST(QAVFileServices, SplitPathAtTheLastDotOfTheName) {
  const char* const cases[][3] = {
      {"sky.HDR", "sky", "HDR"},
      {"a.b.hdr", "a.b", "hdr"},
      {"sky", "sky", ""},
      {"sky.", "sky", ""},
      {".hdr", ".hdr", ""},
      {"dir.d/sky", "dir.d/sky", ""},
      {"dir.d\\sky.png", "dir.d\\sky", "png"},
      {"/x/.hidden.jpg", "/x/.hidden", "jpg"},
      {"", "", ""},
  };
  for (const auto& c : cases) {
    QAVUnicodeString base("old"), extension("old");
    QAVRbaImageServices::SplitPath(c[0], base, extension);
    EXPECT_EQ(base, QAVUnicodeString(c[1])) << c[0];
    EXPECT_EQ(extension, QAVUnicodeString(c[2])) << c[0];
  }
}
