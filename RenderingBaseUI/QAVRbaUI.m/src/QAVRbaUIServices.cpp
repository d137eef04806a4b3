#include "QAVRbaUIServices.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <mutex>

#include "QAVAdpPublicSecurityServices.h"
#include "QAVEnvironment.h"
#include "QAVFrmContext.h"
#include "QAVFrmEditor.h"
#include "QAVI3DGeoVisu.h"
#include "QAVIPsiRepresentationReference.h"
#include "QAVProcessState.h"
#include "QAVRbaTPServices.h"
#include "QAVRef.h"

namespace {

// The subtypes of the 22x shader, supported unless "QAVMatPBRSubtypesEnable"
// is set: setting it is how a site turns them off.
constexpr const char* kPbrSubtypes[] = {
    "EVisu_PBR_22x_Basic",    "EVisu_PBR_22x_Metal",    "EVisu_PBR_22x_Glass",
    "EVisu_PBR_22x_Plastic",  "EVisu_PBR_22x_Leather",  "EVisu_PBR_22x_Textile",
    "EVisu_PBR_22x_CarPaint", "EVisu_PBR_22x_Emissive", "EVisu_PBR_22x_Wood"};

constexpr const char* kAlwaysSupported[] = {"EVisu_PBR_22x",
                                            "EVisu_PBR_21x",
                                            "EVisu_PBR",
                                            "rma_ld_mesh_light",
                                            "NRE_material",
                                            "MPM_material",
                                            "MPM_basic",
                                            "MPM_diffuse",
                                            "MPM_polished_metal",
                                            "MPM_satinated_metal",
                                            "MPM_anisotropic_metal",
                                            "MPM_polished_plastic",
                                            "MPM_soft_plastic",
                                            "MPM_clear_glass",
                                            "MPM_colored_glass",
                                            "MPM_frosted_glass",
                                            "MPM_diamond",
                                            "MPM_emissive",
                                            "MPM_translucent",
                                            "MPM_car_paint",
                                            "mia_phen_material",
                                            "mia_phen_polished_metal",
                                            "mia_phen_polished_plastic",
                                            "mia_phen_plastic",
                                            "mia_phen_anisotropic_metal",
                                            "mia_phen_satinated_metal",
                                            "mia_phen_soft_plastic",
                                            "mia_phen_diffuse",
                                            "mia_phen_glass",
                                            "mia_phen_clear_glass",
                                            "mia_phen_colored_glass",
                                            "mia_phen_frosted_glass",
                                            "mia_phen_backside_translucent",
                                            "mia_phen_simple_translucent",
                                            "mia_phen_reflective_translucent",
                                            "mia_phen_emissive",
                                            "diamond",
                                            "mip_car_paint",
                                            "mip_metallic_paint"};

// The process-wide list, made once; forgotten with the module's state.
struct ShaderTypes {
  static constexpr unsigned char kRead = 1;  // the variable was read
  static constexpr unsigned char kSet = 2;   // and it was set

  std::mutex mutex;
  std::atomic<bool> filled{false};
  unsigned char environment = 0;
  std::vector<QAVString> names;

  static ShaderTypes& Get() {
    static ShaderTypes types;
    return types;
  }

  bool SubtypesDisabled() {
    if (!(environment & kRead))
      environment = kRead | (QAVGetEnv("QAVMatPBRSubtypesEnable") ? kSet : 0);
    return (environment & kSet) != 0;
  }

  const std::vector<QAVString>& Names() {
    if (filled.load(std::memory_order_acquire)) return names;
    const std::lock_guard lock(mutex);
    if (names.empty()) {
      if (!SubtypesDisabled()) names.assign(std::begin(kPbrSubtypes), std::end(kPbrSubtypes));
      names.insert(names.end(), std::begin(kAlwaysSupported), std::end(kAlwaysSupported));
    }
    filled.store(true, std::memory_order_release);
    return names;
  }

  static void Reset() {
    ShaderTypes& types = Get();
    const std::lock_guard lock(types.mutex);
    types.names.clear();
    types.environment = 0;
    types.filled.store(false, std::memory_order_release);
  }
};

QAV_REGISTER_RESET(QAVRbaUIServicesShaderTypes, ShaderTypes::Reset);

// The representation that stands for `object` in its path, or null.
QAV3DRep* RepresentationOf(QAVBaseUnknown* object, std::vector<QAVRef<QAV3DRep>>& holder) {
  const QAVFrmContext* context = QAVFrmContext::GetContext();
  if (context && context->GetWorkbenchName() == "RenderingAmbienceWorkbench") {
    const auto visu = QAVQuery<QAVI3DGeoVisu>(object);
    return visu ? visu->GiveRep() : nullptr;
  }
  const auto reference = QAVQuery<QAVIPsiRepresentationReference>(object);
  if (!reference) return nullptr;
  QAVString type;
  if (FAILED(QAVRbaTPServices::GetTechnoRepType(reference.get(), type)) ||
      FAILED(QAVRbaTPServices::GetTechnoRep(reference.get(), type, holder)) || holder.size() != 1)
    return nullptr;
  return holder.front().get();
}

}  // namespace

bool QAVRbaUIServices::CheckShaderType(QAVString& shaderType) {
  const std::vector<QAVString>& names = ShaderTypes::Get().Names();
  return std::find(names.begin(), names.end(), shaderType) != names.end();
}

std::vector<QAVString> QAVRbaUIServices::GetSupportedShaderTypes() {
  return ShaderTypes::Get().Names();
}

HRESULT QAVRbaUIServices::BuildPathElement(QAVBaseUnknown* object, QAVPathElement** pathElement) {
  if (!object || !pathElement) return E_FAIL;
  auto path = QAVMakeRef<QAVPathElement>();
  std::vector<QAVRef<QAV3DRep>> reps;
  path->AddChildElement(RepresentationOf(object, reps));

  const QAVFrmEditor* editor = QAVFrmEditor::GetCurrentEditor();
  if (!editor) return E_FAIL;
  QAVPathElement edited = editor->GetPathElement();
  edited.InitToLeafElement();
  while (QAVBaseUnknown* father = edited.NextFatherElement())
    if (!father->IsAKindOf("QAVDocument")) path->AddFatherElement(father);
  *pathElement = path.Detach();
  return S_OK;
}

HRESULT QAVRbaUIServices::GetSecurityParameters(QAVString& first, QAVString& second) {
  QAVString third;
  QAVString fourth;
  return QAVAdpPublicSecurityServices::GetSecurityParameters(QAVString(), first, second, third,
                                                             fourth);
}
