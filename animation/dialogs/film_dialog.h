// Animation › Export Film: one dialog for the whole film of a player. The
// file (typed or browsed), the size (the canvas's, 720p, 1080p), the
// compressor, the frames a second and the player; a progress bar with
// Cancel. The film starts at frame 0, the frames are drawn at the film's
// size, and the player and the view are as before when it ends.
#pragma once

#include <QDialog>
#include <string>

class QComboBox;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QSpinBox;

namespace vt::app {

class frmF1;

class frmFilm : public QDialog {
  Q_OBJECT
 public:
  // playerId: the player chosen at first ("" for the first one).
  frmFilm(frmF1* window, const std::string& playerId);
  // Writes the film; the dialog closes when it is written.
  void accept() override;
  // Cancel: stops a film being written, else closes.
  void reject() override;

 private:
  void Browse();
  void PlayerChosen();
  frmF1* window_;
  QLineEdit* txtFile_;
  QComboBox *cboSize_, *cboCodec_, *cboPlayer_;
  QSpinBox* spnRate_;
  QProgressBar* barProgress_;
  QPushButton *cmdBrowse_, *cmdExport_, *cmdCancel_;
  bool running_ = false, cancelled_ = false;
};

// Opens the dialog (one at a time) with that player chosen; "There is no
// animation player to film." when the drawing has none.
void OpenFilmDialog(frmF1* window, const std::string& playerId);

}  // namespace vt::app
