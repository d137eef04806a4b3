// The settings schema: every setting repository the library and its tools use
// and, per repository, its keys with their types and defaults. The live, batch
// and network repositories are declared by QAVRbaLiveUIServices::InitSettings
// in the order of their tables; the other keys are declared by the modules that
// own them and only read or written here. Every read and write of a setting
// goes through a typed Key of this schema (Read, ReadAttr, Write below), so a
// key is always read with the type it is declared with, and a key read before
// it is declared is declared with its default, never with an empty value.
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

#include "QAVSettingRepository.h"
#include "QAVString.h"
#include "QAVSysSettingRepository.h"
#include "QAVTypes.h"
#include "QAVUnicodeString.h"

namespace QAVRbaRenderingSettings {

// The repositories.
inline constexpr const char* kLiveRepository = "RenderingLiveSettings";
inline constexpr const char* kBatchRepository = "RenderingBatchSettings";
inline constexpr const char* kNetworkRepository = "RenderingNetworkSettings";
// The rendering options (screen colour profile, light manipulation).
inline constexpr const char* kOptionsRepository = "RenderingOptionsSettings";
// Where the content to import is installed.
inline constexpr const char* kContentRepository = "ContentInstallPathRepo";
// Kept in memory for one run by the tools, never saved: the focus settings of a
// camera, under the live repository's keys.
inline constexpr const char* kScratchCameraRepository = "QAVRbaScratchCamera";

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

// The settings that the library or its tools read or write by name.
inline constexpr Setting kDomeImage = String("DomeImage", "studio_pure_white.hdr");
inline constexpr Setting kAutofocus = Int("Autofocus", 1);  // 0 manual, 1 centre, 2 a point
inline constexpr Setting kFocalDistance = Float("FocalDistance", 1000.0f);
inline constexpr Setting kFocalPointX = Float("FocalPointX", 0.0f);
inline constexpr Setting kFocalPointY = Float("FocalPointY", 0.0f);
inline constexpr Setting kFocalPointZ = Float("FocalPointZ", 0.0f);
inline constexpr Setting kColorProfileSelectedIndex = Int("ColorProfileSelectedIndex", 0);
// Live settings that other modules declare.
inline constexpr Setting kCurrentAmbience = Text("CurrentAmbience", "");
inline constexpr Setting kBackplatePath = Text("BackplatePath", "");
inline constexpr Setting kAmbiencePath = Text("AmbiencePath", "");
inline constexpr Setting kImporterPopUp = Int("MaterialsorlixImporterPopUp", 0);  // 1: show it
// The rendering options.
inline constexpr Setting kProfileCombo = Int("ProfileCombo", 0);  // 2: a profile file
inline constexpr Setting kProfileFileBrowse = Text("ProfileFileBrowse", "");
inline constexpr Setting kLightManipMode = Int("LightManipMode", 0);  // 0: no snap gizmo
// The content installation.
inline constexpr Setting kContentInstallPath = Text("QAVContentInstallPath", "");

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
    kDomeImage,
    Float("FNumber", 0.0f),
    Float("ShutterTime", 0.006f),
    Float("FilmISO", 100.0f),
    kAutofocus,
    kFocalDistance,
    kFocalPointX,
    kFocalPointY,
    kFocalPointZ,
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
          kColorProfileSelectedIndex});

inline constexpr auto kBatchSettings = Join(
    kRendererHead, kRendererTail,
    {Int("RenderPassCount", 1), TextList("CanvasArray", "result"), Text("SaveBatchDirectory", ""),
     Text("CacheBatchDirectory", ""), Int("RenderEngine", 1), String("RenderMode", "velun:cpu")});

inline constexpr Setting kNetworkSettings[] = {
    String("RemoteAddress", ""), Int("RemotePort", 10001), String("VCAAddress", ""),
    Text("VCAUser", ""),         Text("VCAPassword", ""),
};

// The keys of each repository that other modules declare.
inline constexpr Setting kLiveOthers[] = {kCurrentAmbience, kBackplatePath, kAmbiencePath,
                                          kImporterPopUp};
inline constexpr Setting kOptionsSettings[] = {kProfileCombo, kProfileFileBrowse, kLightManipMode};
inline constexpr Setting kContentSettings[] = {kContentInstallPath};

struct Repository {
  const char* name;
  std::span<const Setting> settings;  // declared by InitSettings, in this order
  std::span<const Setting> others;    // declared elsewhere
};

// The rendering repositories, in the order InitSettings declares them, then the
// others.
inline constexpr Repository kRepositories[] = {
    {kLiveRepository, kLiveSettings, kLiveOthers}, {kBatchRepository, kBatchSettings, {}},
    {kNetworkRepository, kNetworkSettings, {}},    {kOptionsRepository, {}, kOptionsSettings},
    {kContentRepository, {}, kContentSettings},
};
inline constexpr std::size_t kRenderingRepositoryCount = 3;

// The setting of `key` in `settings`, or null.
constexpr const Setting* Find(std::span<const Setting> settings, std::string_view key) {
  for (const Setting& setting : settings)
    if (key == setting.key) return &setting;
  return nullptr;
}
// The repository of this name, or null.
constexpr const Repository* FindRepository(std::string_view name) {
  for (const Repository& repository : kRepositories)
    if (name == repository.name) return &repository;
  return nullptr;
}
// The setting of `key` in the repository of this name, or null.
constexpr const Setting* Find(std::string_view repository, std::string_view key) {
  const Repository* found = FindRepository(repository);
  if (!found) return nullptr;
  const Setting* setting = Find(found->settings, key);
  return setting ? setting : Find(found->others, key);
}

// The value type of a setting type.
template <class T>
inline constexpr Type kTypeOf = Type::TextList;  // no key of another type
template <>
inline constexpr Type kTypeOf<int> = Type::Int;
template <>
inline constexpr Type kTypeOf<float> = Type::Float;
template <>
inline constexpr Type kTypeOf<QAVString> = Type::String;
template <>
inline constexpr Type kTypeOf<QAVUnicodeString> = Type::Text;

// Never defined: a key whose value type is not its setting's type does not
// compile.
void KeyTypeDiffersFromItsSetting();

// A setting of a repository, read and written as values of type T: the
// schema's setting and T must agree, which the compiler checks.
template <class T>
struct Key {
  const char* repository;
  Setting setting;
  constexpr Key(const char* repositoryName, const Setting& declared)
      : repository(repositoryName), setting(declared) {
    if (declared.type != kTypeOf<T>) KeyTypeDiffersFromItsSetting();
  }
  const char* name() const { return setting.key; }
};

inline constexpr Key<QAVString> kLiveDomeImage{kLiveRepository, kDomeImage};
inline constexpr Key<int> kLiveAutofocus{kLiveRepository, kAutofocus};
inline constexpr Key<float> kLiveFocalDistance{kLiveRepository, kFocalDistance};
inline constexpr Key<float> kLiveFocalPointX{kLiveRepository, kFocalPointX};
inline constexpr Key<float> kLiveFocalPointY{kLiveRepository, kFocalPointY};
inline constexpr Key<float> kLiveFocalPointZ{kLiveRepository, kFocalPointZ};
inline constexpr Key<int> kLiveColorProfileSelectedIndex{kLiveRepository,
                                                         kColorProfileSelectedIndex};
inline constexpr Key<QAVUnicodeString> kLiveCurrentAmbience{kLiveRepository, kCurrentAmbience};
inline constexpr Key<QAVUnicodeString> kLiveBackplatePath{kLiveRepository, kBackplatePath};
inline constexpr Key<QAVUnicodeString> kLiveAmbiencePath{kLiveRepository, kAmbiencePath};
inline constexpr Key<int> kLiveImporterPopUp{kLiveRepository, kImporterPopUp};
inline constexpr Key<int> kOptionsProfileCombo{kOptionsRepository, kProfileCombo};
inline constexpr Key<QAVUnicodeString> kOptionsProfileFileBrowse{kOptionsRepository,
                                                                 kProfileFileBrowse};
inline constexpr Key<int> kOptionsLightManipMode{kOptionsRepository, kLightManipMode};
inline constexpr Key<QAVUnicodeString> kContentInstallPathKey{kContentRepository,
                                                              kContentInstallPath};

// Every key above, for the checks that walk them.
struct AnyKey {
  const char* repository;
  Setting setting;
};
template <class T>
constexpr AnyKey Any(const Key<T>& key) {
  return {key.repository, key.setting};
}
inline constexpr AnyKey kKeys[] = {
    Any(kLiveDomeImage),
    Any(kLiveAutofocus),
    Any(kLiveFocalDistance),
    Any(kLiveFocalPointX),
    Any(kLiveFocalPointY),
    Any(kLiveFocalPointZ),
    Any(kLiveColorProfileSelectedIndex),
    Any(kLiveCurrentAmbience),
    Any(kLiveBackplatePath),
    Any(kLiveAmbiencePath),
    Any(kLiveImporterPopUp),
    Any(kOptionsProfileCombo),
    Any(kOptionsProfileFileBrowse),
    Any(kOptionsLightManipMode),
    Any(kContentInstallPathKey),
};

// The default of a key as a value of its type.
inline int DefaultOf(const Key<int>& key) { return key.setting.intValue; }
inline float DefaultOf(const Key<float>& key) { return key.setting.floatValue; }
inline QAVString DefaultOf(const Key<QAVString>& key) { return QAVString(key.setting.text); }
inline QAVUnicodeString DefaultOf(const Key<QAVUnicodeString>& key) {
  return QAVUnicodeString(key.setting.text);
}

// The repository of a key, or null when the host has none.
template <class T>
QAVSettingRepository* Open(const Key<T>& key) {
  return QAVSettingRepository::GetRepository(key.repository);
}

// Reads `key` from `repository` (its own or another holding the same keys): a
// stored value into `value`, S_OK; a key not yet stored is declared with its
// default, which `value` then holds, S_OK; a key stored with another type
// gives E_FAIL with `value` untouched.
template <class T>
HRESULT Read(QAVSettingRepository& repository, const Key<T>& key, T& value) {
  T read = DefaultOf(key);
  const HRESULT result = repository.ReadSetting(key.name(), &read, 1);
  if (SUCCEEDED(result)) value = read;
  return result;
}
// The same, for a reader whose own value is the default: a key not yet stored is
// declared with `value` as it comes, which it then keeps.
template <class T>
HRESULT ReadWithDefault(QAVSettingRepository& repository, const Key<T>& key, T& value) {
  T read = value;
  const HRESULT result = repository.ReadSetting(key.name(), &read, 1);
  if (SUCCEEDED(result)) value = read;
  return result;
}
// The same from the key's own repository; E_FAIL, `value` untouched, without it.
template <class T>
HRESULT Read(const Key<T>& key, T& value) {
  QAVSettingRepository* repository = Open(key);
  return repository ? Read(*repository, key, value) : E_FAIL;
}
// Reads a stored value without declaring anything: E_FAIL, `value` untouched,
// when the key is not stored with its type.
template <class T>
HRESULT ReadAttr(const QAVSysSettingRepository& repository, const Key<T>& key, T& value) {
  return repository.ReadAttr(key.name(), &value, 1);
}
// Writes one value with the key's type (in memory until the repository is
// saved); E_FAIL when the key is stored with another type.
template <class T>
HRESULT Write(QAVSettingRepository& repository, const Key<T>& key, const T& value) {
  return repository.WriteSetting(key.name(), &value, 1);
}

// Declares a setting by reading it into a variable preset to its default: the
// host keeps the preset value for a key it does not hold yet and leaves a
// stored value alone. E_FAIL when it is stored with another type.
inline HRESULT Declare(QAVSettingRepository& repository, const Setting& setting) {
  const char* key = setting.key;
  switch (setting.type) {
    case Type::Int: {
      int variable = setting.intValue;
      return repository.ReadSetting(key, &variable, 1);
    }
    case Type::Float: {
      float variable = setting.floatValue;
      return repository.ReadSetting(key, &variable, 1);
    }
    case Type::String: {
      QAVString variable = setting.text;
      return repository.ReadSetting(key, &variable, 1);
    }
    case Type::Text: {
      QAVUnicodeString variable(setting.text);
      return repository.ReadSetting(key, &variable, 1);
    }
    case Type::TextList: {
      QAVUnicodeString variable[1] = {QAVUnicodeString(setting.text)};
      return repository.ReadSetting(key, variable, 1);
    }
  }
  return E_FAIL;
}

}  // namespace QAVRbaRenderingSettings

#endif
