// Result codes and identifiers shared by the host and its modules.
//
// Results are 32-bit HRESULT-style values: negative means failure. Failures are
// never reported by exceptions.
#ifndef QAVTypes_h
#define QAVTypes_h

#include <cstdint>
#include <cstring>

#include "QAVHostExport.h"

using HRESULT = std::int32_t;

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;  // success, a documented fallback was used
inline constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005u);
inline constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002u);
inline constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000Eu);
inline constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057u);

inline constexpr bool SUCCEEDED(HRESULT hr) { return hr >= 0; }
inline constexpr bool FAILED(HRESULT hr) { return hr < 0; }

// 128-bit identifier of a class or interface.
struct GUID {
  std::uint32_t Data1;
  std::uint16_t Data2;
  std::uint16_t Data3;
  std::uint8_t Data4[8];

  friend bool operator==(const GUID& a, const GUID& b) {
    return std::memcmp(&a, &b, sizeof(GUID)) == 0;
  }
  friend bool operator!=(const GUID& a, const GUID& b) { return !(a == b); }
};
using IID = GUID;
using CLSID = GUID;

#endif
