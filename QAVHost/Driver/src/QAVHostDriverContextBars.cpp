// The driver's part for context bars: command headers loaded as a workbench
// defines them, buttons pressed, the manager taken away.
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "QAVCommandHeader.h"
#include "QAVCtxBarSwitch.h"
#include "QAVHostDriver.h"
#include "QAVIAfrCtxBarManager.h"

namespace {

std::string Trim(const std::string& text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string::npos) return {};
  const auto last = text.find_last_not_of(" \t\r");
  return text.substr(first, last - first + 1);
}

}  // namespace

int QAVHostDriver::LoadCommandHeaders(const std::string& path, std::string& error) {
  std::ifstream in(path);
  if (!in) {
    error = path + ": cannot be read";
    return -1;
  }
  std::vector<std::pair<std::string, std::string>> headers;
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    const std::string text = Trim(line);
    if (text.empty() || text[0] == '#') continue;
    const auto equal = text.find('=');
    const std::string name = equal == std::string::npos ? "" : Trim(text.substr(0, equal));
    const std::string command = equal == std::string::npos ? "" : Trim(text.substr(equal + 1));
    if (name.empty() || command.empty() || command.find_first_of(" \t=") != std::string::npos ||
        name.find_first_of(" \t") != std::string::npos) {
      error = path + ":" + std::to_string(number) +
              ": \"<header name> = <command class name>\" expected";
      return -1;
    }
    const QAVCommandHeader* known = QAVCommandHeader::GetHeaderFromList(name.c_str());
    if (known && !(known->GetCommandClassName() == command.c_str())) {
      error = path + ":" + std::to_string(number);
      error += ": the header " + name + " already starts ";
      error += known->GetCommandClassName().str();
      return -1;
    }
    headers.emplace_back(name, command);
  }
  for (const auto& [name, command] : headers)
    if (!QAVCommandHeader::GetHeaderFromList(name.c_str()))
      QAVCommandHeader::Create(name.c_str(), command.c_str());
  return static_cast<int>(headers.size());
}

HRESULT QAVHostDriver::PressContextBarButton(const char* header, QAVCommand*& started,
                                             std::string& error) {
  started = nullptr;
  auto manager = QAVRef<QAVIAfrCtxBarManager>::Adopt(GetAfrCtxBarManager());
  if (!manager) {
    error = "the host has no context-bar manager";
    return E_FAIL;
  }
  for (QAVAfrCtxBarFrame* frame : manager->GetFrames()) {
    std::string missing;
    if (SUCCEEDED(frame->Press(QAVString(header), started, missing))) return S_OK;
    if (missing.rfind("no command header", 0) == 0) {
      error = missing;
      return E_FAIL;
    }
  }
  error = std::string("no context bar shown has a button \"") + (header ? header : "") + "\"";
  return E_FAIL;
}

void QAVHostDriver::RemoveContextBarManager(bool removed) { qavctxbar::SetUnavailable(removed); }
