// The rendering configuration of the application: text values addressed by a
// section and a key.
//
// It is kept in the text file "RenderingConfiguration.conf" of the settings
// directory (QAVSettingRepository::GetSettingsDirectory), read on first use:
//
//   # a comment (a line starting with '#' or ';')
//   [Rendering]
//   UseGPU = yes
//   [Rendering/Live]
//   MaxSamples = 512
//   Label = "  padded text\twith a tab  "
//
// "[name]" opens a section (a section may be opened again further down); each
// "key = value" line belongs to the last section opened, or to the section ""
// before the first one. Blanks around keys and values are dropped. A value that
// starts with '"' is a quoted text, in which \" \\ \n \t \r and \xHH are escapes,
// so that any text can be stored. Section names are hierarchical, with '/'
// between levels: a key that a section does not hold is looked up in its parent
// ("Rendering/Live" -> "Rendering"), up to its top level. A key may appear once
// per section.
//
// A file that cannot be read or does not follow this format is reported once on
// standard error and reads as empty; it is moved aside as "<file>.corrupt" before
// SetHierarchicalValue replaces it.
#ifndef QAVRbaConfiguration_h
#define QAVRbaConfiguration_h

#include <string>

#include "QAVRbaSiblingsExport.h"
#include "QAVString.h"
#include "QAVTypes.h"

class QAVRBASIBLINGS_API QAVRbaConfiguration {
 public:
  // The text of a key in a section or, when the section does not hold it, in the
  // nearest parent section that does. S_OK and `text` filled; E_FAIL and `text`
  // untouched when no section holds the key.
  static HRESULT GetHierarchicalValue(const QAVString& section, const QAVString& key,
                                      QAVString& text);
  // Stores a value in a section and saves the file atomically, keeping its other
  // lines and comments as the file holds them at the time of the save (the file
  // is re-read under the lock "<file>.lock", so that values other processes set
  // meanwhile are kept). E_FAIL, nothing changed, for a key that cannot be written
  // in the format (empty, with '=' or control characters, starting with '[', '#'
  // or ';', or with blanks around it), a section name with ']' or control
  // characters or blanks around it, or when the file cannot be saved.
  static HRESULT SetHierarchicalValue(const QAVString& section, const QAVString& key,
                                      const QAVString& text);
  // The file the configuration is read from.
  static std::string GetFilePath();
};

#endif
