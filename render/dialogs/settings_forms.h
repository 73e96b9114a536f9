// The settings dialogs of the view: frmF14 "View Setting" (projection type
// and the six limits), frmF3 (the axis settings with the scheme list and the
// axis titles), frmF20 "Axis Properties" (tabs and the choice of scales) and
// frmF8 "Light Properties". They hold no rules of their own: the fields go
// to the Apply functions of settings_core.h, and a refused field keeps the
// dialog open.
#pragma once

#include <QDialog>
#include <array>

#include "render/dialogs/settings_core.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QRadioButton;
class QWidget;

namespace vt::app {

class frmF14 : public QDialog {
  Q_OBJECT
 public:
  explicit frmF14(QWidget* parent);
  void accept() override;

 private:
  QRadioButton *ortho_, *persp_;
  std::array<QLineEdit*, 6> limits_{};
};

class frmF3 : public QDialog {
  Q_OBJECT
 public:
  explicit frmF3(QWidget* parent);
  void accept() override;

 private:
  QComboBox *xy_, *xz_, *yz_;
  QLineEdit *titleX_, *titleY_, *titleZ_;
  QCheckBox *show_, *panelXY_, *panelXZ_, *panelYZ_;
};

class frmF20 : public QDialog {
  Q_OBJECT
 public:
  explicit frmF20(QWidget* parent);
  void accept() override;

 private:
  QCheckBox *show_, *primary_, *secondary_, *labels_, *pi_, *background_, *shadow_, *betterFonts_;
  QLineEdit *width_, *numX_, *numY_, *numZ_;
  QRadioButton *square_, *equal_, *custom_;
  std::array<QLineEdit*, 3> scales_{};
  std::uint32_t backColour_ = 0, backColour2_ = 0;
};

class frmF8 : public QDialog {
  Q_OBJECT
 public:
  explicit frmF8(QWidget* parent);
  void accept() override;

 private:
  struct LightRows {
    QCheckBox* enabled;
    std::array<QLineEdit*, 4> ambient, diffuse, specular, position;
  };
  QCheckBox *lighting_, *global_, *twoSides_;
  std::array<LightRows, 2> lights_{};
  std::array<QLineEdit*, 4> globalAmbient_{};
};

// Registers "mnuViewSet" (frmF14) and "mnuDrawLight" (frmF8) for the window.
void InstallSettingsForms(QWidget* mainWindow);

}  // namespace vt::app
