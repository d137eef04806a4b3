// The photometric distribution of a luminaire, read from an IES photometric text
// file, and its sampling at any direction.
//
// File layout accepted by ReadIESFile:
//   - any number of lines (format identifier, keyword lines...) up to a line
//     whose first five characters are "TILT=" (case-sensitive); every line must be
//     at most 131 characters long;
//   - when that line is exactly "TILT=INCLUDE": the tilt block, one token (the
//     lamp-to-luminaire geometry), an integer N, then 2 * N tokens; all are read
//     and discarded;
//   - the thirteen header numbers: number of lamps, lumens per lamp, candela
//     multiplier, number of vertical angles, number of horizontal angles,
//     photometric type (1 = C, 2 = B, 3 = A), units type (1 = feet, 2 = metres),
//     width, length, height, ballast factor, a number read and ignored, input
//     watts;
//   - the vertical angles, the horizontal angles, then the candela values, one
//     row of vertical values per horizontal angle. Anything after is not read.
// Tokens are separated by any mixture of spaces, tabs, commas and line ends; any
// other character (a semicolon, a lone carriage return...) belongs to the token.
// A token must be shorter than 132 characters. A byte 255 reads as an end of file.
// A "\r\n" pair reads as one line end; a carriage return not followed by a line
// feed is an ordinary character. Numbers are read with a point as decimal
// separator whatever the locale: the reading thread alone is switched to the "C"
// locale for the read and back to its own afterwards, so other threads keep
// theirs, and the process's locale is never changed.
//
// Photometric type B stores its vertical angles negated, type A its horizontal
// angles negated. Candela values are kept as written; the candela multiplier and
// the ballast factor are applied when sampling.
#ifndef QAVRbaLightProfile_h
#define QAVRbaLightProfile_h

#include <cstdint>
#include <cstdio>
#include <vector>

#include "QAVBaseUnknown.h"
#include "QAVRbaUIExport.h"
#include "QAVUnicodeString.h"

class QAVRbaIesReader;

class QAVRBAUI_API QAVRbaLightProfile : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // The symmetry that sampling derives from the range of the horizontal angles
  // (last - first, within 0.001 degree).
  enum class HorizontalSymmetry {
    NoTable,      // nothing read: sampling gives 0.0
    Rotational,   // range 0: one plane for every azimuth
    Quadrant,     // range 90: mirrored into [0, 90]
    Bilateral,    // range 180: mirrored about the 0-180 plane
    Full,         // range 360: every azimuth described
    Unsupported,  // any other range: sampling gives 0.0 everywhere
  };
  // The vertical range (last - first, within 0.001 degree) as sampling uses it.
  enum class VerticalCoverage {
    NoTable,
    Single,       // range 0: the one vertical angle for every direction
    Hemisphere,   // range 90: no light above 90 degrees
    Sphere,       // range 180
    Range360,     // range 360
    Unsupported,  // any other range
  };

  QAVRbaLightProfile();
  // Copies are deep: the copy owns its own tables.
  QAVRbaLightProfile(const QAVRbaLightProfile& other);
  QAVRbaLightProfile& operator=(const QAVRbaLightProfile& other);
  ~QAVRbaLightProfile() override;

  // Reads and parses an IES file; true on success. A profile whose read failed
  // keeps what the parse had stored before the failure and must not be used.
  // Reading again first frees the tables of an earlier file.
  bool ReadIESFile(const QAVUnicodeString& path);
  QAVUnicodeString GetFileName() const;

  // The intensity in candela towards (horizontal, vertical) degrees: the table
  // folded by its symmetry and interpolated linearly, times the candela
  // multiplier and the ballast factor. 0.0 for directions without light, outside
  // the table, and for a profile without a complete table. Allocates nothing.
  double GetLightProfileValue(double horizontalAngle, double verticalAngle) const;

  // Why the last ReadIESFile failed ("line 14: 132 characters or more", ...);
  // empty after a success.
  QAVUnicodeString GetLastError() const { return _lastError; }

  // Header numbers as read (see the layout above).
  int GetNumberOfLamps() const { return _numberOfLamps; }
  double GetLumensPerLamp() const { return _lumensPerLamp; }
  double GetCandelaMultiplier() const { return _candelaMultiplier; }
  int GetNumberOfVerticalAngles() const { return _numberOfVerticalAngles; }
  int GetNumberOfHorizontalAngles() const { return _numberOfHorizontalAngles; }
  int GetPhotometricType() const { return _photometricType; }
  int GetUnitsType() const { return _unitsType; }
  double GetWidth() const { return _width; }
  double GetLength() const { return _length; }
  double GetHeight() const { return _height; }
  double GetBallastFactor() const { return _ballastFactor; }
  double GetInputWatts() const { return _inputWatts; }

  // The angle lists as stored (sign rule applied); after a failed read they may
  // hold fewer values than the counts say.
  const std::vector<double>& GetVerticalAngles() const { return _verticalAngles; }
  const std::vector<double>& GetHorizontalAngles() const { return _horizontalAngles; }
  // True once a read succeeded: both lists and the candela table are complete.
  bool HasCompleteTable() const { return _tableComplete; }
  // The candela value as written in the file at [horizontal index][vertical
  // index]; 0.0 outside what was read.
  double GetCandelaValue(int horizontalIndex, int verticalIndex) const;

  // How sampling folds directions, classified once when a read succeeds.
  HorizontalSymmetry GetHorizontalSymmetry() const { return _symmetry; }
  VerticalCoverage GetVerticalCoverage() const { return _coverage; }

 private:
  friend class QAVRbaIesReader;
  // Classifies the ranges of the complete angle lists for sampling.
  void ClassifyRanges();

  void FreeTables();
  bool ParseIESFile(FILE* file);

  void GetSamplingAnglesFromSymetries(double* horizontalAngle, double* verticalAngle) const;
  static void MapAngleTo0180Quarters(double* angle);
  static void MapAngleTo090Quarter(double* angle);
  static void MapAnglesToStandardRep(double* horizontalAngle, double* verticalAngle);
  void ConvertToStandardRepresentation(double* angle, bool isVertical) const;
  static bool CompareAngles(double a, double b);

  QAVUnicodeString _fileName;
  int _numberOfLamps = 0;
  double _lumensPerLamp = 0.0;
  double _candelaMultiplier = 0.0;
  int _numberOfVerticalAngles = 0;
  int _numberOfHorizontalAngles = 0;
  int _photometricType = 0;
  int _unitsType = 0;
  double _width = 0.0;
  double _length = 0.0;
  double _height = 0.0;
  double _ballastFactor = 0.0;
  double _inputWatts = 0.0;
  std::vector<double> _verticalAngles;
  std::vector<double> _horizontalAngles;
  // One row of vertical values per horizontal angle, rows one after the other.
  std::vector<double> _candelaValues;

  // The tables were allocated by a parse (an earlier file's tables are freed,
  // and the counts cleared, only then).
  bool _tablesAllocated = false;
  bool _tableComplete = false;
  HorizontalSymmetry _symmetry = HorizontalSymmetry::NoTable;
  VerticalCoverage _coverage = VerticalCoverage::NoTable;
  QAVUnicodeString _lastError;
};

#endif
