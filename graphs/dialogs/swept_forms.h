// The dialogs of the swept and derived surfaces: frmRot (surface of
// rotation), frmStretch (extruded surface) and frmSphere (spherical surface).
// They hold no rules of their own: the fields go to ConfirmSweptForm and
// ConfirmSphereForm of graphs/swept_commands.h.
#pragma once

#include <QDialog>
#include <string>

#include "graphs/dialogs/look_tabs.h"
#include "graphs/swept_commands.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QMainWindow;
class QRadioButton;

namespace vt::app {

class ColorButton;

// What frmRot and frmStretch share: the profile, the sweep, the steps and
// the look of the surface. Kept above the main window, not modal.
class SweptDialog : public QDialog {
  Q_OBJECT
 public:
  SweptDialog(QWidget* parent, const std::string& editId, bool rotation);
  const std::string& editId() const { return editId_; }
  SweptForm Form() const;
  void ShowForm(const SweptForm& form);

  void accept() override;
  void done(int result) override;

 private:
  std::string editId_;
  bool rotation_;
  QLineEdit *txtObject_, *txtCenter_ = nullptr, *txtAngle_ = nullptr;
  QLineEdit *txtDX_ = nullptr, *txtDY_ = nullptr, *txtDZ_ = nullptr;
  QLineEdit* txtSteps_;
  SurfaceLookTabs look_;
};

class frmRot : public SweptDialog {
  Q_OBJECT
 public:
  frmRot(QWidget* parent, const std::string& editId) : SweptDialog(parent, editId, true) {}
};

class frmStretch : public SweptDialog {
  Q_OBJECT
 public:
  frmStretch(QWidget* parent, const std::string& editId) : SweptDialog(parent, editId, false) {}
};

// frmSphere: the centre and the point on the surface, the angle ranges, the
// colour and its alpha. Makes new spheres only.
class frmSphere : public QDialog {
  Q_OBJECT
 public:
  frmSphere(QWidget* parent, const std::string& editId);
  SphereForm Form() const;
  void accept() override;

 private:
  QLineEdit *txtCenter_, *txtPoint_, *txtAFrom_, *txtATo_, *txtBFrom_, *txtBTo_, *txtAlpha_;
  ColorButton* cmdColor_;
};

// Installs the three dialogs as the openers of their commands (and of the
// double click on the swept surfaces); they go when the window does.
void InstallSweptForms(QMainWindow* mainWindow);

}  // namespace vt::app
