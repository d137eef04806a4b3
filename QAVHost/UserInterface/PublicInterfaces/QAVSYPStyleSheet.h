// Style sheets of the declarative widgets: the look of each style class, in a
// plain text file of this project's own format, found like message catalogs:
// the file of that name in the "style" folder of the first directory of
// QAVHOST_RESOURCE_PATH that has it.
//
//   # a comment; blank lines are ignored
//   [QAVRbaMaterialCatalogImporterItem]   a style class; the keys below are its
//   width = 360                           key = value (texts; blanks around
//   background = #ffffff                  them are dropped)
//   background:BSelect = #d6e6fb          a variant: used while the widget's state
//                                         BSelect is not 0
//
// A key read for a widget takes its first variant, in the file's order, whose
// state is set, else its plain value. A line that is none of these makes the
// whole sheet malformed: it is reported once on standard error (file and line)
// and the sheet is not used. A sheet is read once and kept until the process
// state is reset.
#ifndef QAVSYPStyleSheet_h
#define QAVSYPStyleSheet_h

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "QAVHostExport.h"

class QAVHOST_API QAVSYPStyleSheet {
 public:
  // The widget's states by name (its int properties and flags), 0 when absent.
  using States = std::map<std::string, int, std::less<>>;

  // The sheet of that name (borrowed), or null when it is missing or malformed.
  static const QAVSYPStyleSheet* Get(const char* name);

  // Reads a sheet's text: true, or false with `error` ("line N: what") and the
  // sheet left empty.
  bool Parse(const std::string& text, std::string& error);

  bool HasClass(const char* styleClass) const;
  // The value of `key` in the style class for a widget in `states`, or
  // `fallback` when the class or the key is missing.
  std::string GetValue(const char* styleClass, const char* key, const States& states,
                       const std::string& fallback) const;
  // The same read as a number, with a point as decimal separator whatever the
  // locale; `fallback` when missing or not wholly a finite number.
  double GetNumber(const char* styleClass, const char* key, const States& states,
                   double fallback) const;

 private:
  struct Entry {
    std::string key;
    std::string state;  // empty for the plain value
    std::string value;
  };
  std::map<std::string, std::vector<Entry>, std::less<>> _classes;
};

#endif
