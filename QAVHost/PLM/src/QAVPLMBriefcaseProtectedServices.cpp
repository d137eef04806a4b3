#include "QAVPLMBriefcaseProtectedServices.h"

#include <unistd.h>

#include <atomic>
#include <ctime>
#include <filesystem>

#include "QAVAtomicFile.h"
#include "QAVContentPackage.h"
#include "QAVPLMRepository.h"

namespace {

std::string UtcText(std::time_t when, const char* format) {
  std::tm parts{};
  gmtime_r(&when, &parts);
  char text[32];
  (void)std::strftime(text, sizeof text, format, &parts);
  return text;
}

// Writes the report in `folder` as `file`; false with `error` when it cannot.
bool WriteReport(const std::string& folder, const std::string& text, std::time_t when,
                 std::string& file, std::string& error) {
  static std::atomic<int> serial{0};
  std::error_code ec;
  std::filesystem::create_directories(folder, ec);
  if (ec) {
    error = "cannot create the report folder " + folder + ": " + ec.message();
    return false;
  }
  file = folder + "/plm-import-" + UtcText(when, "%Y%m%dT%H%M%SZ") + "-" +
         std::to_string(::getpid()) + "-" + std::to_string(++serial) + ".txt";
  std::string writeError;
  if (!QAVAtomicFile::Write(file, text, &writeError)) {
    error = "cannot write the import report " + file + ": " + writeError;
    file.clear();
    return false;
  }
  return true;
}

}  // namespace

HRESULT QAVPLMBriefcaseProtectedServices::ImportAsRef(const QAVString& repository,
                                                      const QAVUnicodeString& packagePath,
                                                      const Attributes& attributes,
                                                      QAVListValQAVUnicodeString& ids,
                                                      std::string* error, std::string* reportFile) {
  ids.RemoveAll();
  if (reportFile) reportFile->clear();
  const std::time_t when = std::time(nullptr);
  std::vector<std::pair<std::string, std::string>> given;
  std::string reportFolder;
  for (const auto& [name, value] : attributes) {
    given.emplace_back(name.str(), value.str());
    if (name == "Report") reportFolder = value.str();
  }

  std::string failure;
  std::vector<std::string> written;
  QAVContentPackage package;
  QAVPLMRepository store;
  const bool imported = SUCCEEDED(package.Open(packagePath.ToNarrow(), failure)) &&
                        SUCCEEDED(store.Open(repository.str(), failure)) &&
                        SUCCEEDED(store.Import(package, given, written, failure));

  std::string report = "PLM import report\nPackage: " + packagePath.str() +
                       "\nRepository: " + repository.str() +
                       "\nTime: " + UtcText(when, "%Y-%m-%dT%H:%M:%SZ") + "\n";
  if (imported) {
    report += "Result: imported " + std::to_string(written.size()) + " object(s)\n";
    const auto& objects = package.GetObjects();
    for (std::size_t i = 0; i < written.size() && i < objects.size(); ++i)
      report += "Object: " + objects[i].id + " -> " + written[i] + " (" + objects[i].type + ", " +
                objects[i].name + ")\n";
  } else {
    report += "Result: failed, nothing imported\nReason: " + failure + "\n";
  }
  std::string reportError;
  std::string reportPath;
  const bool reported =
      reportFolder.empty() || WriteReport(reportFolder, report, when, reportPath, reportError);
  if (reportFile) *reportFile = reportPath;
  if (!imported) {
    if (error) *error = reported ? failure : failure + "; " + reportError;
    return E_FAIL;
  }
  for (const std::string& id : written)
    ids.Append(QAVUnicodeString(id));
  if (!reported) {
    if (error) *error = reportError;
    return S_FALSE;
  }
  return S_OK;
}
