#include "QAVRbaRulerManager.h"

#include <cmath>

#include "QAVRulerDecoratedAngleEditor.h"
#include "QAVRulerDecoratedLengthEditor.h"

namespace {

// The offset between a length ruler and the segment it measures, in mm.
constexpr double kRulerOffsetInMM = 34.7;
// The radius of the angle ruler's arc.
constexpr double kAngleFreeRadius = 37.0;

// A hidden length ruler that the user cannot drag. Like every new command, it
// belongs to the host until it asks for its destruction.
QAVRulerDecoratedLengthEditor* NewLengthRuler(QAVCommand* father, const char* name) {
  auto* ruler = new QAVRulerDecoratedLengthEditor(father, name, nullptr);
  ruler->AllowRulerManipMode(false);
  ruler->SetRulerOffsetInMM(kRulerOffsetInMM);
  ruler->SetScale(QAVRulerDecoratedEditor::NormalScale);
  ruler->SetGlobalVisibility(false);
  ruler->Build();
  return ruler;
}

}  // namespace

QAVRbaRulerManager::QAVRbaRulerManager() = default;

QAVRbaRulerManager::QAVRbaRulerManager(const QAVRbaRulerManager& other) = default;

QAVRbaRulerManager& QAVRbaRulerManager::operator=(const QAVRbaRulerManager& other) = default;

// The rulers are the host's: they are only forgotten.
QAVRbaRulerManager::~QAVRbaRulerManager() = default;

void QAVRbaRulerManager::InitRulers(QAVCommand* father) {
  _father = father;
  DestroyRulers();

  _translationRuler = NewLengthRuler(_father, "myRuler");
  _secondRuler = NewLengthRuler(_father, "myRulerBis");

  _rotationRuler = new QAVRulerDecoratedAngleEditor(_father, "myRulerAngle", nullptr);
  _rotationRuler->SetScale(QAVRulerDecoratedEditor::NormalScale);
  _rotationRuler->SetDecoratorVisibility(false);
  _rotationRuler->SetFreeRadius(kAngleFreeRadius);
  _rotationRuler->Build();
}

void QAVRbaRulerManager::HideRulers() {
  // The angle ruler loses its global visibility too, and refreshRotationRuler
  // only turns its decorator visibility back on.
  if (_translationRuler) _translationRuler->SetGlobalVisibility(false);
  if (_secondRuler) _secondRuler->SetGlobalVisibility(false);
  if (_rotationRuler) _rotationRuler->SetGlobalVisibility(false);
}

void QAVRbaRulerManager::DestroyRulers() {
  if (_translationRuler) _translationRuler->RequestDelayedDestruction();
  _translationRuler = nullptr;
  if (_secondRuler) _secondRuler->RequestDelayedDestruction();
  _secondRuler = nullptr;
  if (_rotationRuler) _rotationRuler->RequestDelayedDestruction();
  _rotationRuler = nullptr;
}

void QAVRbaRulerManager::refreshTranslationRuler(QAVMathPoint start, QAVMathPoint end,
                                                 QAVMathVector direction) {
  const double length = start.DistanceTo(end);
  if (!_translationRuler) return;
  _translationRuler->SetGlobalVisibility(true);
  // Exact comparisons: a unit direction is kept bit for bit, a null one
  // measures along x.
  const double squaredNorm =
      direction.x * direction.x + direction.y * direction.y + direction.z * direction.z;
  if (squaredNorm == 0.0) {
    direction = QAVMathVector(1.0, 0.0, 0.0);
  } else if (squaredNorm != 1.0) {
    const double norm = std::sqrt(squaredNorm);
    direction = QAVMathVector(direction.x / norm, direction.y / norm, direction.z / norm);
  }
  _translationRuler->SetDecoratorData(start, direction, length);
}

void QAVRbaRulerManager::refreshRotationRuler(QAVMathPlane& plane, double angle) {
  if (!_rotationRuler) return;
  _rotationRuler->SetDecoratorVisibility(true);
  _rotationRuler->SetDecoratorData(plane);
  _rotationRuler->SetValue(angle);
  _rotationRuler->Refresh();
}

double QAVRbaRulerManager::getTranslationRulerEditorValue() {
  double value = 0.0;
  if (_translationRuler) {
    value = _translationRuler->GetValue();
    _translationRuler->SetValue(value);
    _translationRuler->Refresh();
  }
  return value;
}

double QAVRbaRulerManager::getRotationRulerEditorAngle() {
  double value = 0.0;
  if (_rotationRuler) value = _rotationRuler->GetValue();
  // The angle read is stamped into the translation ruler as well.
  if (_translationRuler) {
    _translationRuler->SetValue(value);
    _translationRuler->Refresh();
  }
  return value;
}

QAVCommand* QAVRbaRulerManager::GetTranslationRulerCommand() { return _translationRuler; }

QAVCommand* QAVRbaRulerManager::GetRotationRulerCommand() { return _rotationRuler; }

QAVNotification* QAVRbaRulerManager::GetTranslationRulerEditionNotification() {
  return _translationRuler ? _translationRuler->GetVidEditModifyExtNotification() : nullptr;
}

QAVNotification* QAVRbaRulerManager::GetRotationRulerEditionNotification() {
  return _rotationRuler ? _rotationRuler->GetVidEditModifyExtNotification() : nullptr;
}
