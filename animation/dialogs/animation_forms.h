// The animation dialogs: frmAniSetting (a player's settings), the track
// dialogs frmMoving, frmRotating, frmZoom, frmPathAni and frmColorAni (one
// form, its fields by kind), frmVar (parameters) and frmLocus; a player's
// "Save As AVI..." opens the film dialog (film_dialog.h) on that player.
// They stay above the main window and hold no rules of their own:
// animation/animation.h and animation/export.h check the fields, show the
// messages and do the work.
#pragma once

#include <QDialog>
#include <string>

class QComboBox;
class QLineEdit;
class QListWidget;
class QMainWindow;
class QPushButton;

namespace vt::app {

class ColorButton;

// A player's settings: "Steps", "Time" in "Seconds", "Mode".
class frmAniSetting : public QDialog {
  Q_OBJECT
 public:
  frmAniSetting(QWidget* parent, const std::string& playerId);
  void accept() override;

 private:
  std::string id_;
  QLineEdit *txtSteps_, *txtTime_;
  QComboBox* cboMode_;
};

// The player list shared by the track dialogs and frmVar: a combo of the
// players, "Select from the canvas", and Command1 that makes a new player.
class PlayerChooser;

// frmMoving (1), frmRotating (2), frmZoom (3), frmPathAni (4), frmColorAni (5).
class frmTrack : public QDialog {
  Q_OBJECT
 public:
  frmTrack(QWidget* parent, int kind, const std::string& editId);
  ~frmTrack() override;
  void accept() override;
  int kind() const { return kind_; }

 private:
  void Bind();  // the selection into the list
  int kind_;
  std::string editId_;
  PlayerChooser* player_;
  QListWidget* lstBound_;
  QLineEdit *txtPara1_ = nullptr, *txtX_ = nullptr, *txtY_ = nullptr, *txtZ_ = nullptr;
  ColorButton *cmdFrom_ = nullptr, *cmdTo_ = nullptr;
  QLineEdit *txtFrom_, *txtTo_;
};

// frmVar: "Name", "Value", "Min", "Max", "Step", "Decimal", the time range
// and the player; a double click on a parameter's row or on its player's
// panel opens it on that parameter, with the player's settings a button away.
class frmVar : public QDialog {
  Q_OBJECT
 public:
  // editId: the parameter track to edit in place ("" makes a new one).
  explicit frmVar(QWidget* parent, const std::string& editId = std::string());
  ~frmVar() override;
  void accept() override;

 private:
  std::string editId_;
  PlayerChooser* player_;
  QLineEdit *txtName_, *txtValue_, *txtMin_, *txtMax_, *txtStep_, *txtDecimal_, *txtFrom_, *txtTo_;
};

// frmLocus: the traced point (the selected one), its colour and the player.
class frmLocus : public QDialog {
  Q_OBJECT
 public:
  explicit frmLocus(QWidget* parent);
  ~frmLocus() override;
  void accept() override;

 private:
  PlayerChooser* player_;
  QLineEdit* txtPoint_;
  ColorButton* cmdColor_;
};

// Installs the dialogs as the window's animation dialogs, and Animation ›
// Export Film.
void InstallAnimationForms(QMainWindow* mainWindow);

}  // namespace vt::app
