// Colour of a light source from its colour temperature: the CIE 1931 2-degree
// standard colorimetric observer, and the colour of a black body obtained by
// integrating Planck's law against it over the visible range.
#ifndef QAVRbaBlackbody_h
#define QAVRbaBlackbody_h

#include "QAVRbaUIExport.h"

// The colour-matching value of `channel` ('x', 'y' or 'z', lower case only) at a
// wavelength in nanometres. 0 for any other channel and outside 380..780 nm.
//
// The table holds the standard values every 10 nm. On a grid point the value of
// that point is returned. Between two grid points i and i + 1, with w the
// fraction of the way from i to i + 1, the result is
//     w * value[i] + (1 - w) * value[i + 1]
// which is the reverse of an ordinary linear interpolation: just above a grid
// point the value comes almost entirely from the next point. This is the
// established behaviour that callers rely on and is kept on purpose.
//
// The table is built on the first call, once, safely from any thread, and kept
// for the life of the process.
QAVRBAUI_API float CIEColorimetricObserver(char channel, float wavelength);

// The normalised RGB tint of a black body at `temperature` kelvin (0 means
// 6500 K): its largest component is 1. Components are not clamped: a very warm
// source may give a slightly negative blue. At temperatures so low that the
// visible radiation underflows single precision (below about 532 K) the result
// is (0, 0, 0); above about 1.7e20 K it is not a number. The three outputs must
// not be null.
QAVRBAUI_API void BlackbodyColor(float temperature, float* r, float* g, float* b);

#endif
