#include "QAVAfrArguments.h"

#include "QAVAfrArgumentsScope.h"

QAV_IMPLEMENT_CLASS(QAVAfrArguments, QAVBaseUnknown, "UserInterface");

QAVAfrArguments::QAVAfrArguments(std::vector<QAVBaseUnknown_var> values)
    : _values(std::move(values)) {}

QAVAfrArguments::~QAVAfrArguments() = default;

QAVBaseUnknown* QAVAfrArguments::GetArgument(int index) const {
  if (index < 0 || index >= GetCount()) return nullptr;
  return _values[static_cast<std::size_t>(index)].get();
}

namespace {
thread_local QAVAfrArguments* current = nullptr;
}  // namespace

QAVAfrArgumentsScope::QAVAfrArgumentsScope(QAVAfrArguments* arguments) : _previous(current) {
  current = arguments;
}

QAVAfrArgumentsScope::~QAVAfrArgumentsScope() { current = _previous; }

QAVAfrArguments* QAVAfrGetArguments() { return current; }
