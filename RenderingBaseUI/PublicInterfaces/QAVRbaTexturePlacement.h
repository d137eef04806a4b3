// A texture being placed on a part — an applied material, a decal or a
// sticker —, as the material and sticker modules keep it: a model object of
// class "QAVRbaAppliedMaterial", "QAVRbaDecal" or "QAVStkSticker" that holds
// its support (the part it lies on, an object in context), the mapping type,
// the placement of the projection (an isometry in the support's own space: the
// space of the support's box, inside its representation's own matrix; the
// scene's space when there is no support), the
// projection's size along its X, Y and Z axes, the texture's own size, and the
// display toggles of its manipulators.
//
// It answers QAVIRbaMappingObservable itself; its mapping model updater
// (QAVIRbaMappingModelUpdater) is an extension of the three classes. The
// observable calls every observer on a change, the sender included, in the
// order they were added.
#ifndef QAVRbaTexturePlacement_h
#define QAVRbaTexturePlacement_h

#include <vector>

#include "QAVIRbaMappingObservable.h"
#include "QAVMathTransformation.h"
#include "QAVModelObject.h"
#include "QAVRbaUIExport.h"
#include "QAVRef.h"

class QAVRBAUI_API QAVRbaTexturePlacement : public QAVModelObject {
 public:
  enum class Kind { AppliedMaterial, Decal, Sticker };
  // The model class of a kind.
  static const char* ClassOf(Kind kind);

  // A placement of that kind on `support` (may be null; a reference is held),
  // planar, at the origin, 100 x 100 mm, for a texture of 100 x 100 mm.
  QAVRbaTexturePlacement(Kind kind, QAVBaseUnknown* support, const QAVUnicodeString& name = {});
  ~QAVRbaTexturePlacement() override;
  QAVRbaTexturePlacement(const QAVRbaTexturePlacement&) = delete;
  QAVRbaTexturePlacement& operator=(const QAVRbaTexturePlacement&) = delete;

  Kind GetKind() const { return _kind; }
  QAVBaseUnknown* GetSupport() const { return _support.get(); }  // borrowed

  QAVIRbaMappingObservable::MappingType GetMappingType() const { return _type; }
  // Stores a type without telling the observers.
  void StoreMappingType(QAVIRbaMappingObservable::MappingType type) { _type = type; }
  const QAVMathTransformation& GetIsometry() const { return _isometry; }
  void StoreIsometry(const QAVMathTransformation& isometry) { _isometry = isometry; }
  const QAVMathVector& GetSize() const { return _size; }
  void StoreSize(const QAVMathVector& size) { _size = size; }
  double GetTextureWidth() const { return _textureWidth; }
  double GetTextureHeight() const { return _textureHeight; }
  void SetTextureSize(double width, double height);

  bool IsManipulatorRepDisplayed() const { return _manipulatorShown; }
  bool IsDrawingZoneDisplayed() const { return _drawingZoneShown; }
  bool IsCropMode() const { return _cropMode; }
  int GetAlignCount() const { return _alignments; }

  HRESULT QueryInterface(const IID& iid, void** object) override;

 private:
  class Observable;
  friend class Observable;

  Kind _kind;
  QAVRef<QAVBaseUnknown> _support;
  QAVIRbaMappingObservable::MappingType _type = QAVIRbaMappingObservable::Planar;
  QAVMathTransformation _isometry;
  QAVMathVector _size{100, 100, 100};
  double _textureWidth = 100;
  double _textureHeight = 100;
  bool _manipulatorShown = false;
  bool _drawingZoneShown = false;
  bool _cropMode = false;
  int _alignments = 0;
  std::vector<QAVIRbaMappingObserver*> _observers;
  QAVIRbaMappingObservable* _observable;  // owned; aggregated into this object
};

#endif
