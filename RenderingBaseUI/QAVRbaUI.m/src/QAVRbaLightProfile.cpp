// Reading of IES photometric files into a light profile.
//
// The reader works on big chunks of the file rather than single characters, but
// keeps the character rules of a one-character-at-a-time reader exactly:
//   - a byte 255 is an end of file: it ends the line or token it is in, and where
//     a line or a token should start it fails the read (the byte is consumed, so
//     a token it ends is followed by whatever comes after it);
//   - a line or a token of 132 characters or more is an error, 131 are accepted;
//   - "\r\n" is one line end, as the text mode of the platform the files come
//     from delivers it; a carriage return followed by anything else is an
//     ordinary character (that text mode keeps it too). Limits are counted
//     without the carriage return of a "\r\n";
//   - a line or token is seen as a C string: a NUL byte ends its text (the
//     characters after it still count towards the limits);
//   - numbers convert exactly as the scanf conversions "%d" and "%le" convert the
//     token. Plain decimal tokens take a fast path that gives the same value (both
//     round correctly); anything else goes through sscanf itself.
#include "QAVRbaLightProfile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

#include <locale.h>

QAV_IMPLEMENT_CLASS(QAVRbaLightProfile, QAVBaseUnknown, "RenderingBaseUI");

namespace {

// A line or a token reaching this many characters is an error.
constexpr std::size_t kMaxChars = 132;
// Enough bytes ahead to see the longest accepted text and a "\r\n" after it.
constexpr std::size_t kLookahead = kMaxChars + 2;
constexpr std::size_t kChunk = std::size_t{1} << 16;

enum CharClass : unsigned char {
  kOrdinary,
  kSeparator,  // space, tab, comma
  kNewline,
  kReturn,     // ends a token or a line only when a line feed follows
  kEndOfFile,  // byte 255
};

constexpr std::array<unsigned char, 256> MakeClasses() {
  std::array<unsigned char, 256> classes{};
  classes[' '] = kSeparator;
  classes['\t'] = kSeparator;
  classes[','] = kSeparator;
  classes['\n'] = kNewline;
  classes['\r'] = kReturn;
  classes[255] = kEndOfFile;
  return classes;
}
constexpr std::array<unsigned char, 256> kClasses = MakeClasses();

std::string_view UpToNul(std::string_view text) {
  const std::size_t nul = text.find('\0');
  return nul == std::string_view::npos ? text : text.substr(0, nul);
}

// sscanf on the token seen as a C string.
template <class T>
bool ScanWithFormat(std::string_view token, const char* format, T* value) {
  token = UpToNul(token);
  char text[kMaxChars + 1];
  std::memcpy(text, token.data(), token.size());
  text[token.size()] = '\0';
  T converted{};
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#endif
  const int count = std::sscanf(text, format, &converted);  // NOLINT(cert-err34-c)
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
  if (count <= 0) return false;
  *value = converted;
  return true;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The "%d" conversion of a token.
bool ScanInt(std::string_view token, int* value) {
  std::size_t at = 0;
  const bool negative = !token.empty() && token[0] == '-';
  if (!token.empty() && (token[0] == '-' || token[0] == '+')) at = 1;
  const std::size_t digits = token.size() - at;
  if (digits >= 1 && digits <= 9) {
    int result = 0;
    std::size_t i = at;
    for (; i < token.size() && IsDigit(token[i]); ++i)
      result = result * 10 + (token[i] - '0');
    if (i == token.size()) {
      *value = negative ? -result : result;
      return true;
    }
  }
  return ScanWithFormat(token, "%d", value);
}

// The "%le" conversion of a token.
bool ScanDouble(std::string_view token, double* value) {
  const char* first = token.data();
  const char* const last = first + token.size();
  const char* digits = first;
  if (digits != last && (*digits == '+' || *digits == '-')) ++digits;
  if (digits != last && (IsDigit(*digits) || *digits == '.')) {
    if (*first == '+') first = digits;  // from_chars takes no plus sign
    double result = 0.0;
    const auto [end, error] = std::from_chars(first, last, result, std::chars_format::general);
    if (error == std::errc() && end == last) {
      *value = result;
      return true;
    }
  }
  return ScanWithFormat(token, "%le", value);
}

// Numbers are read with a point as decimal separator whatever the user's
// locale. The "C" locale is made current for the reading thread only, never for
// the process: the host's other threads keep formatting numbers in theirs. The
// thread's own locale (its own, or the process's) is current again when this
// goes out of scope. The "C" locale object is made once and kept for the
// process; when it cannot be made (out of memory), the thread's locale stays.
class CLocaleForThisThread {
 public:
  CLocaleForThisThread() {
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    if (cLocale != static_cast<locale_t>(nullptr)) _previous = uselocale(cLocale);
  }
  ~CLocaleForThisThread() {
    if (_previous != static_cast<locale_t>(nullptr)) (void)uselocale(_previous);
  }
  CLocaleForThisThread(const CLocaleForThisThread&) = delete;
  CLocaleForThisThread& operator=(const CLocaleForThisThread&) = delete;

 private:
  locale_t _previous = static_cast<locale_t>(nullptr);
};

const char* const kHeaderNames[13] = {"number of lamps",
                                      "lumens per lamp",
                                      "candela multiplier",
                                      "number of vertical angles",
                                      "number of horizontal angles",
                                      "photometric type",
                                      "units type",
                                      "width",
                                      "length",
                                      "height",
                                      "ballast factor",
                                      "ballast-lamp photometric factor",
                                      "input watts"};

std::string Quote(std::string_view token) {
  std::string text = "'";
  for (const char c : token) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte >= 0x7F) {
      char escaped[8];
      (void)std::snprintf(escaped, sizeof escaped, "\\x%02X", byte);
      text += escaped;
    } else {
      text += c;
    }
  }
  return text + "'";
}

}  // namespace

// The reader behind ParseIESFile: a chunked view of the file with the line and
// token rules, and the parse itself, which stores into the profile as it goes.
class QAVRbaIesReader {
 public:
  QAVRbaIesReader(FILE* file, QAVRbaLightProfile& profile)
      : _file(file), _profile(profile), _buffer(new unsigned char[kChunk]) {
    long start = -1;
    if (std::fseek(file, 0, SEEK_END) == 0) {
      const long size = std::ftell(file);
      start = std::fseek(file, 0, SEEK_SET) == 0 ? size : -1;
    }
    _fileSize = start;
  }

  bool Parse();

 private:
  enum class Got { Text, EndOfFile, Byte255, TooLong };

  // What a token stands for, to say what went wrong with it.
  enum class Item {
    TiltGeometry,
    TiltCount,
    TiltAngle,
    TiltFactor,
    Header,
    VerticalAngle,
    HorizontalAngle,
    Candela
  };
  struct Where {
    Item item;
    std::int64_t index;  // 0-based; for the header, the header number minus 1
    std::int64_t count;
  };

  // Moves the unread bytes to the front and reads more; false when nothing more
  // could be read.
  bool Refill() {
    if (_atEnd) return false;
    const std::size_t unread = _end - _pos;
    std::memmove(_buffer.get(), _buffer.get() + _pos, unread);
    _pos = 0;
    _end = unread;
    const std::size_t got = std::fread(_buffer.get() + _end, 1, kChunk - _end, _file);
    _consumedFromFile += static_cast<std::int64_t>(got);
    _end += got;
    if (got == 0) _atEnd = true;
    return got > 0;
  }
  void EnsureLookahead() {
    while (_end - _pos < kLookahead && Refill()) {
    }
  }
  bool CrLfAt(std::size_t at) {
    if (at + 1 == _end) {
      const std::size_t before = _pos;
      Refill();
      at -= before - _pos;
    }
    return at + 1 < _end && _buffer[at + 1] == '\n';
  }

  // Length of the text starting at _pos, up to the character that ends it: a
  // byte 255, a line feed, a "\r\n" and, for a token, a space, tab or comma.
  // Stops at kMaxChars.
  std::size_t Scan(bool token) const {
    const unsigned char* text = _buffer.get() + _pos;
    const std::size_t available = _end - _pos;
    const std::size_t limit = std::min(available, kMaxChars);
    std::size_t n = 0;
    while (n < limit) {
      const unsigned char cls = kClasses[text[n]];
      if (cls == kOrdinary || (cls == kSeparator && !token)) {
        ++n;
      } else if (cls == kReturn) {
        if (n + 1 < available && text[n + 1] == '\n') break;
        ++n;
      } else {
        break;
      }
    }
    return n;
  }
  // Consumes the character that ended a text (nothing at the end of the file).
  void ConsumeTerminator() {
    if (_pos >= _end) return;
    const unsigned char c = _buffer[_pos];
    if (c == '\r') {
      _pos += 2;
      ++_line;
    } else {
      if (c == '\n') ++_line;
      ++_pos;
    }
  }

  Got NextLine(std::string_view* line) {
    if (_pos == _end && !Refill()) return Got::EndOfFile;
    if (_buffer[_pos] == 255) {
      ++_pos;
      return Got::Byte255;
    }
    EnsureLookahead();
    const std::size_t n = Scan(false);
    if (n >= kMaxChars) return Got::TooLong;
    *line = std::string_view(reinterpret_cast<const char*>(_buffer.get() + _pos), n);
    _pos += n;
    ConsumeTerminator();
    return Got::Text;
  }

  Got NextToken(std::string_view* token) {
    for (;;) {
      if (_pos == _end && !Refill()) return Got::EndOfFile;
      const unsigned char cls = kClasses[_buffer[_pos]];
      if (cls == kSeparator) {
        ++_pos;
      } else if (cls == kNewline) {
        ++_pos;
        ++_line;
      } else if (cls == kReturn && CrLfAt(_pos)) {
        _pos += 2;
        ++_line;
      } else if (cls == kEndOfFile) {
        ++_pos;
        return Got::Byte255;
      } else {
        break;
      }
    }
    _tokenLine = _line;
    if (_end - _pos < kLookahead) EnsureLookahead();
    const std::size_t n = Scan(true);
    if (n >= kMaxChars) return Got::TooLong;
    *token = std::string_view(reinterpret_cast<const char*>(_buffer.get() + _pos), n);
    _pos += n;
    ConsumeTerminator();
    return Got::Text;
  }

  // An upper bound of the tokens the rest of the file can hold (each needs a
  // character and, but for the last, a separator), or -1 when the size of the
  // file is unknown.
  std::int64_t TokensLeftBound() const {
    if (_fileSize < 0) return -1;
    const std::int64_t left = static_cast<std::int64_t>(_fileSize) - _consumedFromFile +
                              static_cast<std::int64_t>(_end - _pos);
    return left <= 0 ? 0 : (left + 1) / 2;
  }

  std::string Describe(const Where& where) const;
  std::string Plural(Item item) const;
  bool Fail(long line, const std::string& message) {
    std::string text;
    if (line > 0) text = "line " + std::to_string(line) + ": ";
    _profile._lastError = QAVUnicodeString(text + message);
    return false;
  }
  bool FailToken(Got got, const Where& where);

  // The next token for `where`; false (with the reason recorded) without one.
  bool Token(std::string_view* token, const Where& where) {
    const Got got = NextToken(token);
    return got == Got::Text || FailToken(got, where);
  }
  bool Int(const Where& where, int* value) {
    std::string_view token;
    if (!Token(&token, where)) return false;
    if (ScanInt(token, value)) return true;
    return Fail(_tokenLine, "token " + Quote(token) + " (" + Describe(where) + "): not an integer");
  }
  bool Double(const Where& where, double* value) {
    std::string_view token;
    if (!Token(&token, where)) return false;
    if (ScanDouble(token, value)) return true;
    return Fail(_tokenLine, "token " + Quote(token) + " (" + Describe(where) + "): not a number");
  }
  bool HeaderInt(int number, int* value) { return Int({Item::Header, number - 1, 13}, value); }
  bool HeaderDouble(int number, double* value) {
    return Double({Item::Header, number - 1, 13}, value);
  }

  bool ReadHeaderLines(bool* include);
  bool ReadTilt();
  bool ReadNumbers();
  bool ReadTables();

  FILE* _file;
  QAVRbaLightProfile& _profile;
  std::unique_ptr<unsigned char[]> _buffer;
  std::size_t _pos = 0;
  std::size_t _end = 0;
  bool _atEnd = false;
  long _fileSize = -1;
  std::int64_t _consumedFromFile = 0;
  long _line = 1;
  long _tokenLine = 1;
};

std::string QAVRbaIesReader::Plural(Item item) const {
  switch (item) {
    case Item::TiltAngle:
      return "tilt angles";
    case Item::TiltFactor:
      return "tilt multiplying factors";
    case Item::VerticalAngle:
      return "vertical angles";
    case Item::HorizontalAngle:
      return "horizontal angles";
    default:
      return "candela values";
  }
}

std::string QAVRbaIesReader::Describe(const Where& where) const {
  const std::string of = std::to_string(where.index + 1) + " of " + std::to_string(where.count);
  switch (where.item) {
    case Item::TiltGeometry:
      return "lamp-to-luminaire geometry of the tilt block";
    case Item::TiltCount:
      return "number of tilt angles";
    case Item::TiltAngle:
      return "tilt angle " + of;
    case Item::TiltFactor:
      return "tilt multiplying factor " + of;
    case Item::Header:
      return "header number " + std::to_string(where.index + 1) + ", " + kHeaderNames[where.index];
    case Item::VerticalAngle:
      return "vertical angle " + of;
    case Item::HorizontalAngle:
      return "horizontal angle " + of;
    case Item::Candela: {
      const std::int64_t rows = _profile._numberOfHorizontalAngles;
      const std::int64_t columns = _profile._numberOfVerticalAngles;
      std::string text = "candela value " + of;
      if (columns > 0 && rows > 0)
        text += ", horizontal angle " + std::to_string(where.index / columns + 1) +
                ", vertical angle " + std::to_string(where.index % columns + 1);
      return text;
    }
  }
  return {};
}

bool QAVRbaIesReader::FailToken(Got got, const Where& where) {
  if (got == Got::TooLong)
    return Fail(_tokenLine, "token of 132 characters or more (" + Describe(where) + ")");
  std::string end = got == Got::Byte255  ? "byte 255 (read as end of file)"
                    : std::ferror(_file) ? "read error"
                                         : "end of file";
  switch (where.item) {
    case Item::TiltAngle:
    case Item::TiltFactor:
    case Item::VerticalAngle:
    case Item::HorizontalAngle:
    case Item::Candela:
      end += " after " + std::to_string(where.index) + " of " + std::to_string(where.count) + " " +
             Plural(where.item);
      break;
    default:
      end += " before the " + Describe(where);
      break;
  }
  // A real end of file has no line worth naming; a byte 255 has.
  return Fail(got == Got::Byte255 ? _line : 0, end);
}

bool QAVRbaIesReader::ReadHeaderLines(bool* include) {
  for (;;) {
    const long at = _line;
    std::string_view line;
    switch (NextLine(&line)) {
      case Got::TooLong:
        return Fail(at, "132 characters or more");
      case Got::EndOfFile:
        return Fail(0, std::ferror(_file) ? "read error before any \"TILT=\" line"
                                          : "no \"TILT=\" line before the end of the file");
      case Got::Byte255:
        return Fail(at, "byte 255 (read as end of file) before any \"TILT=\" line");
      case Got::Text:
        break;
    }
    line = UpToNul(line);
    if (line.substr(0, 5) == "TILT=") {
      *include = line == "TILT=INCLUDE";
      return true;
    }
  }
}

// The tilt block is read and discarded; only its count is converted.
bool QAVRbaIesReader::ReadTilt() {
  std::string_view token;
  if (!Token(&token, {Item::TiltGeometry, 0, 1})) return false;
  int count = 0;
  if (!Int({Item::TiltCount, 0, 1}, &count)) return false;
  for (const Item item : {Item::TiltAngle, Item::TiltFactor})
    for (int k = 0; k < count; ++k)
      if (!Token(&token, {item, k, count})) return false;
  return true;
}

bool QAVRbaIesReader::ReadNumbers() {
  QAVRbaLightProfile& p = _profile;
  std::string_view ignored;
  if (!HeaderInt(1, &p._numberOfLamps) || !HeaderDouble(2, &p._lumensPerLamp) ||
      !HeaderDouble(3, &p._candelaMultiplier) || !HeaderInt(4, &p._numberOfVerticalAngles) ||
      !HeaderInt(5, &p._numberOfHorizontalAngles) || !HeaderInt(6, &p._photometricType))
    return false;
  if (p._photometricType < 1 || p._photometricType > 3)
    return Fail(_tokenLine, "photometric type " + std::to_string(p._photometricType) +
                                " (header number 6): must be 1, 2 or 3");
  if (!HeaderInt(7, &p._unitsType)) return false;
  if (p._unitsType < 1 || p._unitsType > 2)
    return Fail(_tokenLine, "units type " + std::to_string(p._unitsType) +
                                " (header number 7): must be 1 or 2");
  return HeaderDouble(8, &p._width) && HeaderDouble(9, &p._length) &&
         HeaderDouble(10, &p._height) && HeaderDouble(11, &p._ballastFactor) &&
         Token(&ignored, {Item::Header, 11, 13}) && HeaderDouble(13, &p._inputWatts);
}

// The angle lists and the candela table. Storage grows with what the file
// actually holds: a count larger than the rest of the file could satisfy
// reserves no more than that, and the read then fails at the end of the file.
bool QAVRbaIesReader::ReadTables() {
  QAVRbaLightProfile& p = _profile;
  const int vertical = p._numberOfVerticalAngles;
  const int horizontal = p._numberOfHorizontalAngles;
  if (vertical < 0 || horizontal < 0)
    return Fail(0, std::string(vertical < 0 ? "number of vertical angles "
                                            : "number of horizontal angles ") +
                       std::to_string(vertical < 0 ? vertical : horizontal) + ": negative");
  const std::int64_t cells = std::int64_t{vertical} * horizontal;
  const std::int64_t bound = TokensLeftBound();
  const auto reserve = [bound](std::int64_t wanted) {
    return static_cast<std::size_t>(bound < 0 ? std::min<std::int64_t>(wanted, 1 << 16)
                                              : std::min(wanted, bound));
  };
  p._tablesAllocated = true;
  p._verticalAngles.reserve(reserve(vertical));
  p._horizontalAngles.reserve(reserve(horizontal));
  p._candelaValues.reserve(reserve(cells));

  double value = 0.0;
  for (int j = 0; j < vertical; ++j) {
    if (!Double({Item::VerticalAngle, j, vertical}, &value)) return false;
    p.ConvertToStandardRepresentation(&value, true);
    p._verticalAngles.push_back(value);
  }
  for (int i = 0; i < horizontal; ++i) {
    if (!Double({Item::HorizontalAngle, i, horizontal}, &value)) return false;
    p.ConvertToStandardRepresentation(&value, false);
    p._horizontalAngles.push_back(value);
  }
  for (std::int64_t k = 0; k < cells; ++k) {
    if (!Double({Item::Candela, k, cells}, &value)) return false;
    p._candelaValues.push_back(value);
  }
  return true;
}

bool QAVRbaIesReader::Parse() {
  bool include = false;
  if (!ReadHeaderLines(&include)) return false;
  if (include && !ReadTilt()) return false;
  if (!ReadNumbers() || !ReadTables()) return false;
  _profile._tableComplete = true;
  _profile.ClassifyRanges();
  return true;
}

// ----------------------------------------------------------------------------

QAVRbaLightProfile::QAVRbaLightProfile() = default;
QAVRbaLightProfile::QAVRbaLightProfile(const QAVRbaLightProfile& other) = default;
QAVRbaLightProfile& QAVRbaLightProfile::operator=(const QAVRbaLightProfile& other) = default;
QAVRbaLightProfile::~QAVRbaLightProfile() = default;

QAVUnicodeString QAVRbaLightProfile::GetFileName() const { return _fileName; }

void QAVRbaLightProfile::FreeTables() {
  std::vector<double>().swap(_verticalAngles);
  std::vector<double>().swap(_horizontalAngles);
  std::vector<double>().swap(_candelaValues);
}

bool QAVRbaLightProfile::ReadIESFile(const QAVUnicodeString& path) {
  _fileName = path;
  _tableComplete = false;
  _symmetry = HorizontalSymmetry::NoTable;
  _coverage = VerticalCoverage::NoTable;
  // The tables of an earlier file go, and with them the counts; the other
  // numbers keep their values until the new file replaces them.
  if (_tablesAllocated) {
    FreeTables();
    _numberOfVerticalAngles = 0;
    _numberOfHorizontalAngles = 0;
    _tablesAllocated = false;
  }
  _lastError = QAVUnicodeString();

  FILE* file = std::fopen(path.ToNarrow().c_str(), "r");
  if (!file) {
    _lastError = QAVUnicodeString("cannot open the file");
    return false;
  }
  bool parsed = false;
  {
    const CLocaleForThisThread cLocale;
    parsed = ParseIESFile(file);
  }
  (void)std::fclose(file);  // read only: nothing to flush
  return parsed;
}

bool QAVRbaLightProfile::ParseIESFile(FILE* file) {
  QAVRbaIesReader reader(file, *this);
  return reader.Parse();
}

void QAVRbaLightProfile::ConvertToStandardRepresentation(double* angle, bool isVertical) const {
  if ((_photometricType == 2 && isVertical) || (_photometricType == 3 && !isVertical))
    *angle = -*angle;
}

double QAVRbaLightProfile::GetCandelaValue(int horizontalIndex, int verticalIndex) const {
  const std::int64_t columns = _numberOfVerticalAngles;
  if (horizontalIndex < 0 || verticalIndex < 0 || verticalIndex >= columns) return 0.0;
  const std::int64_t at = std::int64_t{horizontalIndex} * columns + verticalIndex;
  return at < static_cast<std::int64_t>(_candelaValues.size())
             ? _candelaValues[static_cast<std::size_t>(at)]
             : 0.0;
}
