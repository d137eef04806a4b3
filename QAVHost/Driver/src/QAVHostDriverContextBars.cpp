// The driver's part for context bars: command headers loaded as a workbench
// defines them, buttons pressed, the manager taken away.
#include <fstream>
#include <sstream>
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
  struct Header {
    std::string name;
    std::string command;
    std::vector<QAVUnicodeString> arguments;
  };
  std::vector<Header> headers;
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    const std::string text = Trim(line);
    if (text.empty() || text[0] == '#') continue;
    const auto equal = text.find('=');
    Header header;
    if (equal != std::string::npos) {
      header.name = Trim(text.substr(0, equal));
      std::istringstream words(text.substr(equal + 1));
      words >> header.command;
      for (std::string word; words >> word;)
        header.arguments.emplace_back(word.c_str());
    }
    if (header.name.empty() || header.command.empty() ||
        header.command.find('=') != std::string::npos ||
        header.name.find_first_of(" \t") != std::string::npos) {
      error = path + ":" + std::to_string(number) +
              ": \"<header name> = <command class name> [argument...]\" expected";
      return -1;
    }
    const QAVCommandHeader* known = QAVCommandHeader::GetHeaderFromList(header.name.c_str());
    if (known && !(known->GetCommandClassName() == header.command.c_str())) {
      error = path + ":" + std::to_string(number);
      error += ": the header " + header.name + " already starts ";
      error += known->GetCommandClassName().str();
      return -1;
    }
    headers.push_back(std::move(header));
  }
  for (const Header& header : headers)
    if (!QAVCommandHeader::GetHeaderFromList(header.name.c_str()))
      QAVCommandHeader::Create(header.name.c_str(), header.command.c_str(), header.arguments);
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
