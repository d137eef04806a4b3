// PLM repositories: imports are whole or absent (a refused package, an
// unopenable repository, a process killed midway), several processes import at
// once, and the session's collaborative space and security context.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "QAVAdpPublicSecurityServices.h"
#include "QAVContentPackage.h"
#include "QAVPLMBriefcaseProtectedServices.h"
#include "QAVPLMComponentServices.h"
#include "QAVPLMRepository.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

class PLMRepositoryTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    _plm.emplace("QAVHOST_PLM_DIR", (_scratch.path() / "plm").string());
  }
  void TearDown() override {
    _plm.reset();
    HostTest::TearDown();
  }

  // Packs a package of `count` props, each with one file of `fileBytes` bytes.
  std::string MakePackage(const std::string& name, int count, std::size_t fileBytes = 16) {
    const std::string dir = "src-" + name;
    std::string objects;
    for (int i = 0; i < count; ++i) {
      const std::string id = "prop" + std::to_string(i);
      objects.append(i ? "," : "").append(R"({"id":")").append(id);
      objects.append(R"(","type":"Prop","name":"Prop )").append(std::to_string(i));
      objects.append(R"(","files":[")").append(id).append(R"(.bin"],"attributes":{)");
      objects.append(R"("Maturity":"SHARED","Index":")").append(std::to_string(i)).append("\"}}");
      _scratch.Write((fs::path(dir) / (id + ".bin")).string(),
                     std::string(fileBytes, static_cast<char>('a' + i % 26)));
    }
    std::string manifest = R"({"format":"orlix","version":1,"kind":"Props","title":")";
    manifest.append(name).append(R"(","objects":[)").append(objects).append("]}");
    _scratch.Write(dir + "/manifest.json", manifest);
    std::string out = (_scratch.path() / (name + ".orlix")).string();
    std::string error;
    EXPECT_EQ(QAVContentPackage::Pack((_scratch.path() / dir).string(), out, error), S_OK) << error;
    return out;
  }

  static HRESULT Import(const std::string& repository, const std::string& package,
                        QAVListValQAVUnicodeString& ids, std::string* error = nullptr,
                        const std::string& report = {}) {
    QAVPLMBriefcaseProtectedServices::Attributes attributes{{"Maturity", "PRIVATE"}};
    if (!report.empty()) attributes.emplace_back("Report", QAVUnicodeString(report));
    return QAVPLMBriefcaseProtectedServices::ImportAsRef(
        QAVString(repository), QAVUnicodeString(package), attributes, ids, error);
  }

  // The repository's objects (identifiers and names), after checking that the
  // database is sound.
  static std::vector<std::string> Contents(const std::string& name) {
    QAVPLMRepository repository;
    std::string error;
    EXPECT_EQ(repository.Open(name, error), S_OK) << error;
    EXPECT_EQ(repository.CheckIntegrity(), "ok");
    std::vector<QAVPLMRepository::ObjectInfo> objects;
    EXPECT_EQ(repository.ListObjects(objects, error), S_OK) << error;
    std::vector<std::string> contents;
    contents.reserve(objects.size());
    for (const auto& object : objects)
      contents.push_back(object.id + " " + object.name);
    return contents;
  }

  std::optional<qavtest::ScopedEnv> _plm;
};

// Runs `body` in a child process; returns its wait status.
template <class Body>
int InChild(Body body) {
  const pid_t pid = ::fork();
  if (pid == 0) ::_exit(body());
  int status = 0;
  if (pid < 0 || ::waitpid(pid, &status, 0) != pid) return -1;
  return status;
}

TEST_F(PLMRepositoryTest, ImportWritesEveryObjectWithAttributesFilesAndReport) {
  const std::string package = MakePackage("chairs", 3, 100);
  const std::string reports = (_scratch.path() / "reports").string();
  QAVListValQAVUnicodeString ids;
  std::string error;
  ASSERT_EQ(Import("PLM1", package, ids, &error, reports), S_OK) << error;
  ASSERT_EQ(ids.Size(), 3);
  std::set<std::string> distinct;
  for (const QAVUnicodeString& id : ids) {
    EXPECT_EQ(id.str().size(), 32u);
    distinct.insert(id.str());
  }
  EXPECT_EQ(distinct.size(), 3u);
  EXPECT_TRUE(fs::exists(QAVPLMRepository::FileOf("PLM1")));
  EXPECT_EQ(fs::path(QAVPLMRepository::FileOf("PLM1")).parent_path(), _scratch.path() / "plm");

  QAVPLMRepository repository;
  ASSERT_EQ(repository.Open("PLM1", error), S_OK) << error;
  QAVPLMRepository::ObjectInfo object;
  ASSERT_EQ(repository.GetObject(ids[2].str(), object, error), S_OK) << error;
  EXPECT_EQ(object.sourceId, "prop1");
  EXPECT_EQ(object.name, "Prop 1");
  EXPECT_EQ(object.kind, "Props");
  EXPECT_EQ(object.package, package);
  using Pairs = std::vector<std::pair<std::string, std::string>>;
  // The caller's maturity wins over the package's; the report folder is kept.
  EXPECT_EQ(object.attributes,
            (Pairs{{"Index", "1"}, {"Maturity", "PRIVATE"}, {"Report", reports}}));
  ASSERT_EQ(object.files.size(), 1u);
  EXPECT_EQ(object.files[0].first, "prop1.bin");
  EXPECT_EQ(object.files[0].second, 100u);
  std::string bytes;
  EXPECT_EQ(repository.GetFileBytes(ids[2].str(), "prop1.bin", bytes, error), S_OK);
  EXPECT_EQ(bytes, std::string(100, 'b'));
  EXPECT_EQ(repository.GetFileBytes(ids[2].str(), "prop0.bin", bytes, error), S_FALSE);
  EXPECT_EQ(repository.GetObject("no-such-id", object, error), S_FALSE);

  // A second import adds fresh objects; the report tells each one's identifier.
  QAVListValQAVUnicodeString again;
  ASSERT_EQ(Import("PLM1", package, again, &error, reports), S_OK) << error;
  EXPECT_EQ(Contents("PLM1").size(), 6u);
  EXPECT_EQ(again.Locate(ids[1]), 0);
  std::vector<fs::path> written;
  for (const auto& entry : fs::directory_iterator(reports))
    written.push_back(entry.path());
  ASSERT_EQ(written.size(), 2u);
  const std::string first = qavtest::ReadFile(written[0]);
  const std::string report =
      first.find(ids[1].str()) != std::string::npos ? first : qavtest::ReadFile(written[1]);
  EXPECT_NE(report.find("Package: " + package + "\nRepository: PLM1\nTime: "), std::string::npos)
      << report;
  EXPECT_NE(report.find("Result: imported 3 object(s)\nObject: prop0 -> " + ids[1].str() +
                        " (Prop, Prop 0)\n"),
            std::string::npos)
      << report;

  // A package without objects imports nothing, successfully.
  QAVListValQAVUnicodeString none;
  EXPECT_EQ(Import("PLM1", MakePackage("empty", 0), none, &error), S_OK) << error;
  EXPECT_EQ(none.Size(), 0);
  EXPECT_EQ(Contents("PLM1").size(), 6u);
}

TEST_F(PLMRepositoryTest, RefusalsWriteNothing) {
  const std::string good = MakePackage("good", 2);
  QAVListValQAVUnicodeString ids;
  std::string error;
  ASSERT_EQ(Import("TST", good, ids, &error), S_OK) << error;
  const std::vector<std::string> before = Contents("TST");

  // A package that is not a zip archive: refused, reported, nothing written.
  const std::string bad = _scratch.Write("bad.orlix", "not an archive").string();
  const std::string reports = (_scratch.path() / "reports").string();
  EXPECT_EQ(Import("TST", bad, ids, &error, reports), E_FAIL);
  EXPECT_EQ(ids.Size(), 0);
  EXPECT_EQ(error, bad + ": not a zip archive");
  EXPECT_EQ(Contents("TST"), before);
  const fs::directory_iterator report(reports);
  ASSERT_NE(report, fs::directory_iterator());
  EXPECT_NE(qavtest::ReadFile(report->path())
                .find("Result: failed, nothing imported\nReason: " + bad + ": not a zip archive"),
            std::string::npos);

  // An unopenable repository refuses; the others still take imports.
  Driver().MakeRepositoryUnopenable("TST");
  EXPECT_EQ(Import("TST", good, ids, &error), E_FAIL);
  EXPECT_NE(error.find("'TST' cannot be opened"), std::string::npos) << error;
  EXPECT_EQ(Import("PLM1", good, ids, &error), S_OK) << error;
  Driver().MakeRepositoryUnopenable("");
  EXPECT_EQ(Contents("TST"), before);

  // Names that are not plain stay inside the directory; empty and overlong
  // ones are refused.
  for (const std::string name :
       {"../outside", "a/b", ".", "..", "space name", "\xC3\xA9t\xC3\xA9"}) {
    const fs::path file = QAVPLMRepository::FileOf(name);
    EXPECT_EQ(file.parent_path(), _scratch.path() / "plm") << name;
    EXPECT_EQ(Import(name, good, ids, &error), S_OK) << name << ": " << error;
    EXPECT_TRUE(fs::exists(file)) << name;
  }
  EXPECT_NE(QAVPLMRepository::FileOf("a/b"), QAVPLMRepository::FileOf("a%2Fb"));
  EXPECT_EQ(Import("", good, ids, &error), E_FAIL);
  EXPECT_EQ(Import(std::string(129, 'x'), good, ids, &error), E_FAIL);
  EXPECT_FALSE(fs::exists(_scratch.path() / "outside.plmdb"));
}

TEST_F(PLMRepositoryTest, DataDirectoryFollowsTheEnvironment) {
  const std::string scratch = _scratch.str();
  EXPECT_EQ(QAVPLMRepository::Directory(), scratch + "/plm");
  qavtest::ScopedEnv xdg("XDG_DATA_HOME", scratch + "/xdg");
  qavtest::ScopedEnv home("HOME", scratch + "/home");
  {
    qavtest::ScopedEnv unset("QAVHOST_PLM_DIR", std::nullopt);
    EXPECT_EQ(QAVPLMRepository::Directory(), scratch + "/xdg/qavhost/plm");
    qavtest::ScopedEnv empty("XDG_DATA_HOME", "");
    EXPECT_EQ(QAVPLMRepository::Directory(), scratch + "/home/.local/share/qavhost/plm");
    // Created on demand.
    QAVPLMRepository repository;
    std::string error;
    ASSERT_EQ(repository.Open("PLM1", error), S_OK) << error;
    EXPECT_TRUE(fs::exists(scratch + "/home/.local/share/qavhost/plm/PLM1.plmdb"));
  }
}

TEST_F(PLMRepositoryTest, ProcessesImportingAtOnceAllSucceed) {
  const std::string package = MakePackage("crowd", 50, 2000);
  std::vector<pid_t> children;
  for (int i = 0; i < 3; ++i) {
    const pid_t pid = ::fork();
    if (pid == 0) {
      QAVListValQAVUnicodeString ids;
      int failures = 0;
      for (int round = 0; round < 4; ++round) {
        std::string error;
        if (Import("PLM1", package, ids, &error) != S_OK || ids.Size() != 50) {
          ++failures;
          (void)std::fprintf(stderr, "import %d failed: %s\n", round, error.c_str());
        }
      }
      ::_exit(failures);
    }
    ASSERT_GT(pid, 0);
    children.push_back(pid);
  }
  for (const pid_t pid : children) {
    int status = 0;
    ASSERT_EQ(::waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
  }
  EXPECT_EQ(Contents("PLM1").size(), 3u * 4u * 50u);
}

TEST_F(PLMRepositoryTest, ProcessKilledMidImportLeavesTheRepositoryAsBefore) {
  QAVListValQAVUnicodeString ids;
  std::string error;
  ASSERT_EQ(Import("PLM1", MakePackage("first", 2), ids, &error), S_OK) << error;
  const std::vector<std::string> before = Contents("PLM1");
  const std::string package = MakePackage("second", 6, 50000);

  const int status = InChild([&] {
    Driver().KillDuringImport(4);
    QAVListValQAVUnicodeString lost;
    (void)Import("PLM1", package, lost);
    return 0;  // not reached: killed before the commit
  });
  ASSERT_TRUE(WIFSIGNALED(status)) << status;
  EXPECT_EQ(WTERMSIG(status), SIGKILL);
  EXPECT_EQ(Contents("PLM1"), before);

  // The repository takes the same import afterwards.
  ASSERT_EQ(Import("PLM1", package, ids, &error), S_OK) << error;
  EXPECT_EQ(Contents("PLM1").size(), before.size() + 6u);
}

TEST_F(PLMRepositoryTest, CollaborativeSpaceAndSecurityContext) {
  QAVPLMConnectionService* connection = nullptr;
  ASSERT_EQ(QAVPLMComponentServices::GetConnectionService(connection), S_OK);
  ASSERT_NE(connection, nullptr);
  QAVString space;
  EXPECT_EQ(connection->GetCurrentSpace(space), S_OK);
  EXPECT_EQ(space, "Common Space");
  Driver().SetCollaborativeSpace("Team A");
  EXPECT_EQ(connection->GetCurrentSpace(space), S_OK);
  EXPECT_EQ(space, "Team A");
  Driver().SetCollaborativeSpace("");
  EXPECT_EQ(connection->GetCurrentSpace(space), E_FAIL);

  QAVString role, organisation, securitySpace, access;
  ASSERT_EQ(QAVAdpPublicSecurityServices::GetSecurityParameters("", role, organisation,
                                                                securitySpace, access),
            S_OK);
  EXPECT_EQ(role + "|" + organisation + "|" + securitySpace + "|" + access,
            "Designer|Company|Common Space|Author");
  Driver().SetSecurityParameters("Leader", "Studio", "Team A", "Owner");
  ASSERT_EQ(QAVAdpPublicSecurityServices::GetSecurityParameters("ctx", role, organisation,
                                                                securitySpace, access),
            S_OK);
  EXPECT_EQ(role + "|" + organisation + "|" + securitySpace + "|" + access,
            "Leader|Studio|Team A|Owner");
  Driver().SetSecurityUnavailable(true);
  EXPECT_EQ(QAVAdpPublicSecurityServices::GetSecurityParameters("ctx", role, organisation,
                                                                securitySpace, access),
            E_FAIL);
  EXPECT_TRUE(role.IsEmpty() && organisation.IsEmpty() && securitySpace.IsEmpty() &&
              access.IsEmpty());

  // A restart keeps the driver's settings; a new session starts from the
  // defaults again.
  Driver().Restart();
  EXPECT_EQ(QAVAdpPublicSecurityServices::GetSecurityParameters("", role, organisation,
                                                                securitySpace, access),
            E_FAIL);
  EXPECT_EQ(connection->GetCurrentSpace(space), E_FAIL);
  _driver.reset();
  _driver.emplace();
  EXPECT_EQ(QAVAdpPublicSecurityServices::GetSecurityParameters("", role, organisation,
                                                                securitySpace, access),
            S_OK);
  EXPECT_EQ(role, "Designer");
  EXPECT_EQ(connection->GetCurrentSpace(space), S_OK);
  EXPECT_EQ(space, "Common Space");
}

}  // namespace
