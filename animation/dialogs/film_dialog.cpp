#include "animation/dialogs/film_dialog.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QStatusBar>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

#include "animation/export.h"
#include "animation/player_objects.h"
#include "app/canvas.h"
#include "app/frmF1.h"
#include "app/scene_frames.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"

namespace vt::app {

namespace {

QPointer<frmFilm> g_open;

// Where a film goes unless the user says otherwise: beside the document, or
// in the home folder, named after the document.
QString DefaultFilmPath() {
  const QFileInfo doc(QString::fromStdString(CurrentFilePath));
  const QString folder = CurrentFilePath.empty() ? QDir::homePath() : doc.absolutePath();
  const QString name = CurrentFilePath.empty() ? QString("film") : doc.completeBaseName();
  return QDir(folder).filePath(name + ".avi");
}

}  // namespace

frmFilm::frmFilm(frmF1* window, const std::string& playerId) : QDialog(window), window_(window) {
  setObjectName("frmFilm");
  setWindowTitle(tr("Export Film"));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowModality(Qt::ApplicationModal);
  txtFile_ = new QLineEdit(DefaultFilmPath(), this);
  txtFile_->setObjectName("txtFile");
  txtFile_->setMinimumWidth(320);
  cmdBrowse_ = new QPushButton(tr("Browse..."), this);
  cmdBrowse_->setObjectName("cmdBrowse");
  auto* file = new QHBoxLayout;
  file->addWidget(txtFile_);
  file->addWidget(cmdBrowse_);
  cboSize_ = new QComboBox(this);
  cboSize_->setObjectName("cboSize");
  int w = 1, h = 1;
  host().CanvasSize(w, h);
  cboSize_->addItem(tr("Canvas (%1 x %2)").arg(w).arg(h), QSize(w, h));
  cboSize_->addItem(tr("720p (1280 x 720)"), QSize(1280, 720));
  cboSize_->addItem(tr("1080p (1920 x 1080)"), QSize(1920, 1080));
  cboCodec_ = new QComboBox(this);
  cboCodec_->setObjectName("cboCodec");
  for (const FilmCodec& c : FilmCodecs()) cboCodec_->addItem(QString::fromStdString(c.caption), QString::fromStdString(c.name));
  spnRate_ = new QSpinBox(this);
  spnRate_->setObjectName("spnRate");
  spnRate_->setRange(1, 60);
  spnRate_->setSuffix(tr(" frames/second"));
  cboPlayer_ = new QComboBox(this);
  cboPlayer_->setObjectName("cboPlayer");
  for (int i = 1; i <= Doc.AniCtrls.count(); ++i) {
    const CAniControl* c = Doc.AniCtrls.Item(i);
    QString caption = QString::fromStdString(c->ID);
    if (!c->anis.empty() && !c->anis.front()->Note.empty())
      caption += "  (" + QString::fromStdString(c->anis.front()->Note) + ")";
    cboPlayer_->addItem(caption, QString::fromStdString(c->ID));
  }
  cboPlayer_->setCurrentIndex(std::max(0, cboPlayer_->findData(QString::fromStdString(playerId))));
  barProgress_ = new QProgressBar(this);
  barProgress_->setObjectName("barProgress");
  barProgress_->setValue(0);
  auto* form = new QFormLayout;
  form->addRow(tr("File"), file);
  form->addRow(tr("Size"), cboSize_);
  form->addRow(tr("Compressor"), cboCodec_);
  form->addRow(tr("Speed"), spnRate_);
  form->addRow(tr("Player"), cboPlayer_);
  auto* buttons = new QDialogButtonBox(this);
  cmdExport_ = buttons->addButton(tr("Export"), QDialogButtonBox::AcceptRole);
  cmdExport_->setObjectName("cmdExport");
  cmdExport_->setDefault(true);
  cmdCancel_ = buttons->addButton(QDialogButtonBox::Cancel);
  cmdCancel_->setObjectName("cmdCancel");
  auto* v = new QVBoxLayout(this);
  v->addLayout(form);
  v->addWidget(barProgress_);
  v->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &frmFilm::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &frmFilm::reject);
  connect(cmdBrowse_, &QPushButton::clicked, this, &frmFilm::Browse);
  connect(cboPlayer_, &QComboBox::currentIndexChanged, this, &frmFilm::PlayerChosen);
  PlayerChosen();
}

void frmFilm::Browse() {
  const QString chosen = QFileDialog::getSaveFileName(this, tr(kFilmSaveTitle), txtFile_->text(), tr("AVI Files (*.avi)"));
  if (!chosen.isEmpty()) txtFile_->setText(chosen);
}

void frmFilm::PlayerChosen() {
  // The player's own speed: its run takes as long in the film as on the canvas.
  if (const CAniControl* c = Doc.AniCtrls.FindById(cboPlayer_->currentData().toString().toStdString()))
    spnRate_->setValue(std::clamp(static_cast<int>(std::lround(c->Steps * 1000.0 / std::max(1, c->RunTimes))), 1, 60));
}

void frmFilm::accept() {
  if (running_) return;
  QString path = txtFile_->text().trimmed();
  auto refuse = [this](const std::string& message, QWidget* field) {
    host().MsgBox(message, "Export Film", MsgButtons::OK, MsgIcon::Exclamation);
    field->setFocus();
  };
  if (path.isEmpty()) return refuse("Choose a file for the film.", txtFile_);
  if (QFileInfo(path).suffix().isEmpty()) path += ".avi";
  path = QFileInfo(path).absoluteFilePath();
  if (!QFileInfo(QFileInfo(path).absolutePath()).isDir())
    return refuse("The folder " + QFileInfo(path).absolutePath().toStdString() + " does not exist.", txtFile_);
  CAniControl* player = Doc.AniCtrls.FindById(cboPlayer_->currentData().toString().toStdString());
  if (!player) return refuse("There is no animation player to film.", cboPlayer_);
  const QSize size = cboSize_->currentData().toSize();
  SceneFrames frames(window_->picDraw(), size.width(), size.height());
  if (!frames.valid()) return refuse("The frames of the film cannot be drawn: OpenGL has no framebuffer for them.", cboSize_);
  FilmRequest request;
  request.path = path.toStdString();
  request.codec = cboCodec_->currentData().toString().toStdString();
  request.fps = spnRate_->value();
  request.width = size.width();
  request.height = size.height();
  running_ = true;
  cancelled_ = false;
  const auto inputs = {static_cast<QWidget*>(txtFile_), static_cast<QWidget*>(cmdBrowse_), static_cast<QWidget*>(cboSize_),
                       static_cast<QWidget*>(cboCodec_), static_cast<QWidget*>(spnRate_), static_cast<QWidget*>(cboPlayer_),
                       static_cast<QWidget*>(cmdExport_)};
  for (QWidget* w : inputs) w->setEnabled(false);
  std::string error;
  const FilmEnd end = WriteFilm(*player, request, [&frames] { return frames.Draw(); },
                                [this](int i, int n) {
                                  barProgress_->setRange(0, n);
                                  barProgress_->setValue(i);
                                  QCoreApplication::processEvents();
                                  return !cancelled_;
                                },
                                error);
  running_ = false;
  for (QWidget* w : inputs) w->setEnabled(true);
  window_->picDraw()->MakeCurrent();
  RedrawScene();
  if (end == FilmEnd::Written) {
    window_->statusBar()->showMessage(tr("Film written to %1 (%2 frames, %3 x %4)")
                                          .arg(path)
                                          .arg(player->Steps + 1)
                                          .arg(request.width)
                                          .arg(request.height),
                                      15000);
    QDialog::accept();
    return;
  }
  barProgress_->setValue(0);
  if (end == FilmEnd::Cancelled) window_->statusBar()->showMessage(tr("Film export cancelled; no file written."), 8000);
  else host().MsgBox("The film could not be written: " + error, "Export Film", MsgButtons::OK, MsgIcon::Critical);
}

void frmFilm::reject() {
  if (running_) {
    cancelled_ = true;
    return;
  }
  QDialog::reject();
}

void OpenFilmDialog(frmF1* window, const std::string& playerId) {
  if (Doc.AniCtrls.count() == 0) {
    host().MsgBox("There is no animation player to film.", "Export Film", MsgButtons::OK, MsgIcon::Information);
    return;
  }
  if (g_open) g_open->close();
  g_open = new frmFilm(window, playerId);
  g_open->show();
  g_open->raise();
}

}  // namespace vt::app
