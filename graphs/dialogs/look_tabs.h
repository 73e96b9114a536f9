// What the formula dialogs share: small makers of named fields, choices and
// colour buttons, and the look of a sampled surface as four tabs (colour,
// material, transparency, texture) used by frmF6, frmRot and frmStretch.
// The forms of the core (SurfaceForm, SweptForm) share their look fields.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <string>

#include "geometry/dialogs/property_forms.h"
#include "graphs/color_ramp.h"
#include "graphs/look_fields.h"
#include "render/material.h"

class QTabWidget;
class QWidget;

namespace vt::app {

inline QString Q(const std::string& s) { return QString::fromStdString(s); }
inline std::string S(const QLineEdit* e) { return e->text().toStdString(); }

QLineEdit* FormField(QWidget* parent, const QString& name, int width = 90);
QComboBox* FormChoice(QWidget* parent, const QString& name, const QStringList& items);
ColorButton* FormColor(QWidget* parent, const QString& name);

class SurfaceLookTabs {
 public:
  // Adds the pages "Color", "Material", "Transparency" and "Texture" to tabs.
  void AddTo(QTabWidget* tabs);

  void Read(SurfaceLookFields& f) const {
    f.fillStyle = std::clamp(cboFillStyle_->currentIndex(), 0, 4) + 1;
    f.firstColor = cmdFirstColor_->color();
    f.secondColor = cmdSecondColor_->color();
    f.rampIndex = std::max(cboRamp_->currentIndex(), 0);
    f.customRamp = f.rampIndex >= kRampCount ? cboRamp_->currentText().toStdString() : std::string();
    f.material = std::max(cboMaterial_->currentIndex(), 0);
    f.show = cboShow_->currentIndex() + 1;
    f.smoothness = cboSmoothness_->currentIndex() + 1;
    f.showTrans = chkTrans_->isChecked();
    f.transAlpha = S(txtAlpha_);
    f.showTex = chkTexture_->isChecked();
    f.texName = S(txtTexName_);
    f.texMode = optTexColor_->isChecked() ? 2 : 1;
  }

  void Show(const SurfaceLookFields& f) {
    cboFillStyle_->setCurrentIndex(std::clamp(f.fillStyle, 1, 5) - 1);
    cmdFirstColor_->setColor(f.firstColor);
    cmdSecondColor_->setColor(f.secondColor);
    // A ramp of the object's own is offered after the five, under its name.
    while (cboRamp_->count() > kRampCount) cboRamp_->removeItem(kRampCount);
    if (!f.customRamp.empty()) cboRamp_->addItem(Q(f.customRamp[0] == '@' ? f.customRamp.substr(1) : f.customRamp));
    cboRamp_->setCurrentIndex(std::clamp(f.rampIndex, 0, cboRamp_->count() - 1));
    cboMaterial_->setCurrentIndex(std::clamp(f.material, 0, kMaterialSchemeCount));
    cboShow_->setCurrentIndex(std::clamp(f.show, 1, 3) - 1);
    cboSmoothness_->setCurrentIndex(std::clamp(f.smoothness, 1, 3) - 1);
    chkTrans_->setChecked(f.showTrans);
    txtAlpha_->setText(Q(f.transAlpha));
    chkTexture_->setChecked(f.showTex);
    txtTexName_->setText(Q(f.texName));
    (f.texMode == 2 ? optTexColor_ : optTexAlone_)->setChecked(true);
  }

 private:
  QWidget* ColorPage(QWidget* parent);
  QWidget* MaterialPage(QWidget* parent);
  QWidget* TransparencyPage(QWidget* parent);
  QWidget* TexturePage(QWidget* parent);

  QComboBox *cboFillStyle_ = nullptr, *cboRamp_ = nullptr, *cboShow_ = nullptr, *cboSmoothness_ = nullptr,
            *cboMaterial_ = nullptr;
  ColorButton *cmdFirstColor_ = nullptr, *cmdSecondColor_ = nullptr;
  QCheckBox *chkTrans_ = nullptr, *chkTexture_ = nullptr;
  QLineEdit *txtAlpha_ = nullptr, *txtTexName_ = nullptr;
  QRadioButton *optTexAlone_ = nullptr, *optTexColor_ = nullptr;
};

}  // namespace vt::app
