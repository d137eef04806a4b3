// The rendering settings: the setting repositories of the live, batch and
// network renderers and, per repository, its keys in declaration order with
// their types and defaults. QAVRbaLiveUIServices::InitSettings declares exactly
// these; the readers of the settings take their names from here.
//
// Types: Int (int), Float (float), String (QAVString, 8-bit), Text
// (QAVUnicodeString) and TextList (an array of QAVUnicodeString declared with a
// count of 1, its one element the default).
//
// The live and batch renderers share the keys from "DomeImage" to "Vignetting"
// with the same defaults, except that the batch repository has no
// "FileSaveAllowed", and neither the roll settings nor
// "ColorProfileSelectedIndex"; its "RenderEngine" comes after its own keys.
// These differences are deliberate.
#ifndef QAVRbaRenderingSettings_h
#define QAVRbaRenderingSettings_h

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace QAVRbaRenderingSettings {

// The repositories.
inline constexpr const char* kLiveRepository = "RenderingLiveSettings";
inline constexpr const char* kBatchRepository = "RenderingBatchSettings";
inline constexpr const char* kNetworkRepository = "RenderingNetworkSettings";
// The rendering options (screen colour profile choice); not declared here.
inline constexpr const char* kOptionsRepository = "RenderingOptionsSettings";

// Keys that the library reads.
inline constexpr const char* kColorProfileSelectedIndex = "ColorProfileSelectedIndex";  // live
inline constexpr const char* kBackplatePath = "BackplatePath";          // live, not declared
inline constexpr const char* kAmbiencePath = "AmbiencePath";            // live, not declared
inline constexpr const char* kProfileCombo = "ProfileCombo";            // options: int, 2 = a file
inline constexpr const char* kProfileFileBrowse = "ProfileFileBrowse";  // options: its path

enum class Type { Int, Float, String, Text, TextList };

// A setting and its default: intValue for Int, floatValue for Float, text for
// the other types.
struct Setting {
  const char* key = nullptr;
  Type type = Type::Int;
  int intValue = 0;
  float floatValue = 0.0f;
  const char* text = nullptr;
};

constexpr Setting Int(const char* key, int value) { return {key, Type::Int, value, 0.0f, nullptr}; }
constexpr Setting Float(const char* key, float value) {
  return {key, Type::Float, 0, value, nullptr};
}
constexpr Setting String(const char* key, const char* value) {
  return {key, Type::String, 0, 0.0f, value};
}
constexpr Setting Text(const char* key, const char* value) {
  return {key, Type::Text, 0, 0.0f, value};
}
constexpr Setting TextList(const char* key, const char* element) {
  return {key, Type::TextList, 0, 0.0f, element};
}

// The parts of a repository's table, one after the other.
template <std::size_t... N>
constexpr std::array<Setting, (N + ...)> Join(const Setting (&... parts)[N]) {
  std::array<Setting, (N + ...)> all{};
  std::size_t at = 0;
  const auto append = [&all, &at](const auto& part) {
    for (const Setting& setting : part)
      all[at++] = setting;
  };
  (append(parts), ...);
  return all;
}

// Shared by the live and batch renderers: up to "FileSaveAllowed", then after it.
inline constexpr Setting kRendererHead[] = {
    String("DomeImage", "studio_pure_white.hdr"),
    Float("FNumber", 0.0f),
    Float("ShutterTime", 0.006f),
    Float("FilmISO", 100.0f),
    Int("Autofocus", 1),
    Float("FocalDistance", 1000.0f),
    Float("FocalPointX", 0.0f),
    Float("FocalPointY", 0.0f),
    Float("FocalPointZ", 0.0f),
    Float("Width", 800.0f),
    Float("Height", 600.0f),
    Int("KeepRatio", 0),
    String("Units", "pixels"),
    Int("DPI", 150),
    Int("Resolution", 1),
    Int("SaveType", 11),
    Int("InsertLogo", 0),
};
inline constexpr Setting kRendererTail[] = {
    Int("SaveLimit", 0),           Int("SaveFrameLimit", 100),        Int("SaveTimeLimit", 60),
    Int("SaveTimeUnit", 0),        Float("SaveErrorThreshold", 0.5f), Float("CrushBlacks", 0.0f),
    Float("BurnHighlights", 1.0f), Float("Saturation", 1.0f),         Float("Gamma", 2.2f),
    Float("Vignetting", 0.0f),
};

inline constexpr auto kLiveSettings =
    Join(kRendererHead, {Int("FileSaveAllowed", 0)}, kRendererTail,
         {Int("RenderEngine", 1), Int("RollActivation", 0), Float("RollValue", 0.0f),
          Int(kColorProfileSelectedIndex, 0)});

inline constexpr auto kBatchSettings = Join(
    kRendererHead, kRendererTail,
    {Int("RenderPassCount", 1), TextList("CanvasArray", "result"), Text("SaveBatchDirectory", ""),
     Text("CacheBatchDirectory", ""), Int("RenderEngine", 1), String("RenderMode", "velun:cpu")});

inline constexpr Setting kNetworkSettings[] = {
    String("RemoteAddress", ""), Int("RemotePort", 10001), String("VCAAddress", ""),
    Text("VCAUser", ""),         Text("VCAPassword", ""),
};

struct Repository {
  const char* name;
  std::span<const Setting> settings;
};

// In the order InitSettings declares them.
inline constexpr Repository kRepositories[] = {
    {kLiveRepository, kLiveSettings},
    {kBatchRepository, kBatchSettings},
    {kNetworkRepository, kNetworkSettings},
};

// The setting of `key` in `settings`, or null.
constexpr const Setting* Find(std::span<const Setting> settings, std::string_view key) {
  for (const Setting& setting : settings)
    if (key == setting.key) return &setting;
  return nullptr;
}

}  // namespace QAVRbaRenderingSettings

#endif
