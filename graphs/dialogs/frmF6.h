// frmF6: the surface dialog (space curves and surfaces, new ones and the
// editing of one). The fields go to ConfirmSurfaceForm of
// graphs/surface_form.h, which checks them, shows the messages and makes or
// changes the object.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "graphs/dialogs/look_tabs.h"
#include "graphs/surface_form.h"

class QPushButton;

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMainWindow;
class QRadioButton;
class QTabWidget;

namespace vt::app {

class frmF6 : public QDialog {
  Q_OBJECT
 public:
  frmF6(QWidget* parent, const std::string& editId);
  const std::string& editId() const { return editId_; }
  SurfaceForm Form() const;
  void ShowForm(const SurfaceForm& form);

  void accept() override;
  void done(int result) override;

 private:
  void BuildFields();
  QWidget* BuildFieldTab();
  QWidget* BuildClipTab();
  QWidget* BuildTangentTab();
  void UpdateFormList();
  void UpdateLabels();
  int GraphType() const;
  int CoordType() const;

  std::string editId_;
  bool updating_ = false;
  QRadioButton *optCurve_, *optSurface_, *optCartesian_, *optCylindrical_, *optSpherical_;
  QListWidget* lstForm_;
  QLabel *lblFormula1_, *lblFormula2_, *lblFormula3_;
  QLineEdit *txtFormula1_, *txtFormula2_, *txtFormula3_;
  std::vector<QPushButton*> pads_;  // the pad beside each formula field
  QLabel *lblMinU_, *lblMaxU_, *lblStepsU_, *lblMinV_, *lblMaxV_, *lblStepsV_, *lblMinW_, *lblMaxW_, *lblStepsW_;
  QLineEdit *txtMinU_, *txtMaxU_, *txtStepsU_, *txtMinV_, *txtMaxV_, *txtStepsV_, *txtMinW_, *txtMaxW_, *txtStepsW_;
  QTabWidget* tabs_;
  SurfaceLookTabs look_;
  QCheckBox *chkContour_, *chkVector_, *chkColormap_;
  QLineEdit* txtContourLevel_;
  QCheckBox* chkClip_;
  QLineEdit* txtClip_[6];  // min x, max x, min y, max y, min z, max z
  QCheckBox *chkTangent_, *chkNormal_;
  QLineEdit *txtTangentAt_, *txtNormalAt_;
};

// Installs frmF6 as the window's surface dialog; it goes when the window
// does.
void InstallSurfaceForms(QMainWindow* mainWindow);

}  // namespace vt::app
