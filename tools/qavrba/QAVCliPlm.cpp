// qavrba plm: the PLM repositories, their objects and the import of content
// packages into them.
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "QAVCli.h"
#include "QAVPLMBriefcaseProtectedServices.h"
#include "QAVPLMRepository.h"

namespace {

// A value that may not be empty: an empty one is a usage error, not the default.
CLI::Validator NotEmpty() {
  return CLI::Validator(
      [](const std::string& text) -> std::string {
        return text.empty() ? "the value may not be empty" : std::string();
      },
      "");
}

// The commands that only read open the repository as it is: one that does not
// exist is an error, never created.
int List(const std::string& name) {
  QAVPLMRepository repository;
  std::string error;
  std::vector<QAVPLMRepository::ObjectInfo> objects;
  if (FAILED(repository.OpenExisting(name, error)) ||
      FAILED(repository.ListObjects(objects, error)))
    return qavcli::Fail(error);
  for (const QAVPLMRepository::ObjectInfo& object : objects)
    std::printf("%s\t%s\t%s\t%s\n", object.id.c_str(), object.type.c_str(), object.name.c_str(),
                object.imported.c_str());
  std::printf("%zu object(s) in %s\n", objects.size(), name.c_str());
  return 0;
}

int Show(const std::string& name, const std::string& id) {
  QAVPLMRepository repository;
  std::string error;
  QAVPLMRepository::ObjectInfo object;
  if (FAILED(repository.OpenExisting(name, error))) return qavcli::Fail(error);
  const HRESULT hr = repository.GetObject(id, object, error);
  if (FAILED(hr)) return qavcli::Fail(error);
  if (hr == S_FALSE) return qavcli::Fail("no object '" + id + "' in the repository '" + name + "'");
  std::printf("id\t%s\ntype\t%s\nname\t%s\nkind\t%s\npackage\t%s\npackage id\t%s\nimported\t%s\n",
              object.id.c_str(), object.type.c_str(), object.name.c_str(), object.kind.c_str(),
              object.package.c_str(), object.sourceId.c_str(), object.imported.c_str());
  for (const auto& [key, value] : object.attributes)
    std::printf("attribute\t%s = %s\n", key.c_str(), value.c_str());
  for (const auto& [path, size] : object.files)
    std::printf("file\t%s\t%llu bytes\n", path.c_str(), static_cast<unsigned long long>(size));
  return 0;
}

int Import(const std::string& name, const std::string& file, const std::string& report) {
  // A report folder that cannot be one is refused before anything is imported.
  std::error_code ec;
  if (const auto status = std::filesystem::status(report, ec);
      !report.empty() && std::filesystem::exists(status) && !std::filesystem::is_directory(status))
    return qavcli::Fail("the report folder " + report + " is not a folder");
  QAVPLMBriefcaseProtectedServices::Attributes attributes{{"Maturity", "PRIVATE"}};
  if (!report.empty()) attributes.emplace_back("Report", QAVUnicodeString(report));
  QAVListValQAVUnicodeString ids;
  std::string error;
  std::string reportFile;
  const HRESULT hr = QAVPLMBriefcaseProtectedServices::ImportAsRef(
      QAVString(name), QAVUnicodeString(file), attributes, ids, &error, &reportFile);
  if (FAILED(hr))
    return qavcli::Fail(reportFile.empty() ? error : error + " (report: " + reportFile + ")");
  for (const QAVUnicodeString& id : ids)
    std::printf("%s\n", id.c_str());
  std::printf("imported %d object(s) into %s\n", ids.Size(), name.c_str());
  if (!reportFile.empty()) std::printf("report: %s\n", reportFile.c_str());
  if (hr == S_FALSE) (void)std::fprintf(stderr, "qavrba: warning: %s\n", error.c_str());
  return 0;
}

void Setup(CLI::App& program) {
  CLI::App* plm = program.add_subcommand(
      "plm", "PLM repositories (QAVHOST_PLM_DIR, else the user's data directory).");
  plm->require_subcommand(1);
  auto repository = std::make_shared<std::string>("PLM1");

  CLI::App* list = plm->add_subcommand("list", "The objects of a repository.");
  list->add_option("--repository", *repository, "The repository (default PLM1)")->check(NotEmpty());
  qavcli::OnRun(list, [repository] { return List(*repository); });

  auto id = std::make_shared<std::string>();
  CLI::App* show = plm->add_subcommand("show", "One object: its attributes and files.");
  show->add_option("id", *id, "The object's identifier")->required();
  show->add_option("--repository", *repository, "The repository (default PLM1)")->check(NotEmpty());
  qavcli::OnRun(show, [repository, id] { return Show(*repository, *id); });

  auto file = std::make_shared<std::string>();
  auto report = std::make_shared<std::string>();
  CLI::App* import = plm->add_subcommand(
      "import", "Imports a content package, all or nothing, with Maturity=PRIVATE.");
  import->add_option("file", *file, "The package")->required()->check(NotEmpty());
  import->add_option("--repository", *repository, "The repository (default PLM1)")
      ->check(NotEmpty());
  import->add_option("--report", *report, "A folder to write the import's report in")
      ->check(NotEmpty());
  qavcli::OnRun(import, [repository, file, report] { return Import(*repository, *file, *report); });
}

}  // namespace

QAV_CLI_COMMAND("plm", Setup);
