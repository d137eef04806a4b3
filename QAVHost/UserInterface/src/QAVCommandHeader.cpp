#include "QAVCommandHeader.h"

#include <algorithm>
#include <vector>

#include "QAVAfrArgumentsScope.h"
#include "QAVBoxingOfQAVUnicodeString.h"
#include "QAVCommand.h"
#include "QAVFillDictionary.h"
#include "QAVProcessState.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVCommandHeader, QAVBaseUnknown, "System");

namespace {
std::vector<QAVRef<QAVCommandHeader>>& HeaderList() {
  static auto* const headers = new std::vector<QAVRef<QAVCommandHeader>>;
  return *headers;
}
}  // namespace

QAVCommandHeader::QAVCommandHeader(const char* headerName, const char* commandClassName,
                                   const std::vector<QAVUnicodeString>& arguments)
    : _headerName(headerName), _commandClassName(commandClassName) {
  std::vector<QAVBaseUnknown_var> boxed;
  boxed.reserve(arguments.size());
  for (const QAVUnicodeString& argument : arguments)
    boxed.push_back(QAVBoxingOfQAVUnicodeString::Box(argument));
  _arguments = QAVMakeRef<QAVAfrArguments>(std::move(boxed));
}

QAVCommandHeader::~QAVCommandHeader() = default;

QAVCommandHeader* QAVCommandHeader::Create(const char* headerName, const char* commandClassName,
                                           const std::vector<QAVUnicodeString>& arguments) {
  if (!headerName || !*headerName || !commandClassName || !*commandClassName) return nullptr;
  if (GetHeaderFromList(headerName)) return nullptr;
  auto header = QAVRef<QAVCommandHeader>::Adopt(
      new QAVCommandHeader(headerName, commandClassName, arguments));
  HeaderList().push_back(header);
  return header.get();
}

QAVCommandHeader* QAVCommandHeader::GetHeaderFromList(const char* headerName) {
  if (!headerName) return nullptr;
  const auto& headers = HeaderList();
  const auto it = std::find_if(
      headers.begin(), headers.end(),
      [headerName](const QAVRef<QAVCommandHeader>& h) { return h->GetHeaderName() == headerName; });
  return it == headers.end() ? nullptr : it->get();
}

int QAVCommandHeader::GetHeaderCount() { return static_cast<int>(HeaderList().size()); }

void QAVCommandHeader::ResetHeaderList() {
  // Swap first: a header's destruction must not see a half-emptied list.
  std::vector<QAVRef<QAVCommandHeader>> headers;
  headers.swap(HeaderList());
}

QAV_REGISTER_RESET(QAVCommandHeader, &QAVCommandHeader::ResetHeaderList);

QAVCommand* QAVCommandHeader::StartCommand() {
  const QAVAfrArgumentsScope scope(_arguments.get());
  QAVCommand* command = QAVFillDictionary::CreateCommand(_commandClassName.c_str());
  if (!command) return nullptr;
  ++_startCount;
  command->Activate(nullptr, nullptr);
  return command;
}
