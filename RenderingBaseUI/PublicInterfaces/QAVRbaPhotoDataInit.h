// The photographic ladders of the rendering camera: the f-numbers, film
// sensitivities and shutter speeds offered to the user, and the exposure
// correction of an aperture. Slider and list positions map to these exact
// values, so they are part of what users see and save.
#ifndef QAVRbaPhotoDataInit_h
#define QAVRbaPhotoDataInit_h

#include "QAVRbaUIExport.h"

// Number of values each ladder writes; the caller's array holds at least that.
inline constexpr int QAVRbaApertureValueCount = 25;
inline constexpr int QAVRbaISOValueCount = 73;
inline constexpr int QAVRbaExtraISOValueCount = 24;
inline constexpr int QAVRbaSpeedValueCount = 13;

// f-numbers in half stops from f/1 to f/64; index 12 is f/8.
QAVRBAUI_API void InitApertureValues(float* values);
// ISO values, four per octave (b, 4/3 b, 1.5 b, 5/3 b) from 0.195 to 51200, with
// two kept departures: 66.666 (not 66.667), and the common film speed 250 in
// the octave of 200 in place of 300 (200, 250, 266.667, 333.333; 250 at index 41).
QAVRBAUI_API void InitISOValues(float* values);
// The six octaves below 0.195, by the same rule; the third value is 0.00457125
// as it has always been (the rule gives 0.0045703125).
QAVRBAUI_API void InitEXTRA_ISOValues(float* values);
// Shutter speeds as the denominators N of 1/N second, from 1 to 4000.
QAVRBAUI_API void InitSpeedValues(float* values);

// The exposure correction, in EV relative to f/8, of an aperture of the ladder
// written by InitApertureValues (or any table of at least 25 entries): the
// first entry exactly equal to `aperture`, at index i, gives (i - 12) / 2, so
// f/1 gives -6 and f/64 +6. 0 and +infinity give 0; any other value not in the
// first 25 entries (NaN included) gives 6.5. A null table is a programming
// error: the process ends with "AssertionFailed:apertureTable".
QAVRBAUI_API float GetEVCorrectionForAperture(float aperture, const float* apertureTable);

#endif
