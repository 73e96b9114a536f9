// frmRot, frmStretch and frmSphere: fields, the look tabs of a swept surface,
// and the confirmation through the core.
#include "graphs/dialogs/swept_forms.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

#include "app/canvas.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "geometry/dialogs/property_forms.h"
#include "graphs/dialogs/form_opener.h"
#include "graphs/dialogs/look_tabs.h"
#include "graphs/surface_form.h"
#include "render/material.h"

namespace vt::app {

namespace {

void MakeCanvasCurrent(QWidget* dialog) {
  if (Canvas* canvas = dialog->parentWidget() ? dialog->parentWidget()->findChild<Canvas*>() : nullptr)
    canvas->MakeCurrent();
}

QDialogButtonBox* Buttons(QDialog* dialog) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
  buttons->setObjectName("buttons");
  QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
  return buttons;
}

}  // namespace

// ---- frmRot and frmStretch ------------------------------------------------------------------

SweptDialog::SweptDialog(QWidget* parent, const std::string& editId, bool rotation)
    : QDialog(parent), editId_(editId), rotation_(rotation) {
  setObjectName(rotation ? "frmRot" : "frmStretch");
  const QString title = rotation ? tr("Surface of Rotation") : tr("Extruded Surface");
  setWindowTitle(editId.empty() ? title : title + " - " + Q(editId));
  setAttribute(Qt::WA_DeleteOnClose);
  setModal(false);

  auto* outer = new QVBoxLayout(this);
  auto* grid = new QGridLayout();
  outer->addLayout(grid);
  int row = 0;
  txtObject_ = FormField(this, "txtObject");
  grid->addWidget(new QLabel(tr("Object"), this), row, 0);
  grid->addWidget(txtObject_, row++, 1);
  if (rotation) {
    txtCenter_ = FormField(this, "txtCenter");
    txtAngle_ = FormField(this, "txtAngle", 160);
    grid->addWidget(new QLabel(tr("Axis or center"), this), row, 0);
    grid->addWidget(txtCenter_, row++, 1);
    grid->addWidget(new QLabel(tr("Angle"), this), row, 0);
    grid->addWidget(txtAngle_, row++, 1);
  } else {
    txtDX_ = FormField(this, "txtDX", 160);
    txtDY_ = FormField(this, "txtDY", 160);
    txtDZ_ = FormField(this, "txtDZ", 160);
    grid->addWidget(new QLabel(tr("dx"), this), row, 0);
    grid->addWidget(txtDX_, row++, 1);
    grid->addWidget(new QLabel(tr("dy"), this), row, 0);
    grid->addWidget(txtDY_, row++, 1);
    grid->addWidget(new QLabel(tr("dz"), this), row, 0);
    grid->addWidget(txtDZ_, row++, 1);
  }
  txtSteps_ = FormField(this, "txtSteps");
  grid->addWidget(new QLabel(tr("Steps"), this), row, 0);
  grid->addWidget(txtSteps_, row++, 1);

  auto* tabs = new QTabWidget(this);
  tabs->setObjectName("tabLook");
  look_.AddTo(tabs);
  outer->addWidget(tabs);
  outer->addWidget(Buttons(this));

  SweptForm form = NewSweptForm(rotation);
  if (!editId.empty()) {
    if (rotation) {
      if (const CSurRot* s = Doc.SurRots.FindById(editId)) form = LoadSweptForm(*s);
    } else if (const CStretch* s = Doc.Stretchs.FindById(editId)) {
      form = LoadSweptForm(*s);
    }
  }
  ShowForm(form);
}

SweptForm SweptDialog::Form() const {
  SweptForm f;
  f.rotation = rotation_;
  f.objId = S(txtObject_);
  if (rotation_) {
    f.centerId = S(txtCenter_);
    f.angle = S(txtAngle_);
  } else {
    f.dx = S(txtDX_);
    f.dy = S(txtDY_);
    f.dz = S(txtDZ_);
  }
  f.steps = S(txtSteps_);
  look_.Read(f);
  return f;
}

void SweptDialog::ShowForm(const SweptForm& f) {
  txtObject_->setText(Q(f.objId));
  if (rotation_) {
    txtCenter_->setText(Q(f.centerId));
    txtAngle_->setText(Q(f.angle));
  } else {
    txtDX_->setText(Q(f.dx));
    txtDY_->setText(Q(f.dy));
    txtDZ_->setText(Q(f.dz));
  }
  txtSteps_->setText(Q(f.steps));
  look_.Show(f);
}

void SweptDialog::accept() {
  MakeCanvasCurrent(this);
  SweptForm form = Form();
  SweptConfirm result = SweptConfirm::Stay;
  if (!RunGuarded([&] { result = ConfirmSweptForm(form, editId_); })) return;
  if (result == SweptConfirm::Stay) {
    ShowForm(form);
    return;
  }
  QDialog::accept();
}

void SweptDialog::done(int result) {
  if (EditMode && !editId_.empty() && EditObjectId == editId_) EditMode = false;
  QDialog::done(result);
}

// ---- frmSphere ---------------------------------------------------------------------------------------

frmSphere::frmSphere(QWidget* parent, const std::string&) : QDialog(parent) {
  setObjectName("frmSphere");
  setWindowTitle(tr("Spherical Surface"));
  setAttribute(Qt::WA_DeleteOnClose);
  setModal(false);
  auto* outer = new QVBoxLayout(this);
  auto* grid = new QGridLayout();
  outer->addLayout(grid);
  txtCenter_ = FormField(this, "txtCenter");
  txtPoint_ = FormField(this, "txtPoint");
  txtAFrom_ = FormField(this, "txtAFrom");
  txtATo_ = FormField(this, "txtATo");
  txtBFrom_ = FormField(this, "txtBFrom");
  txtBTo_ = FormField(this, "txtBTo");
  txtAlpha_ = FormField(this, "txtAlpha");
  cmdColor_ = FormColor(this, "cmdColor");
  const std::pair<const char*, QWidget*> rows[] = {
      {"Center", txtCenter_}, {"Point", txtPoint_}, {"Angle a from", txtAFrom_}, {"to", txtATo_},
      {"Angle b from", txtBFrom_}, {"to ", txtBTo_}, {"Color", cmdColor_}, {"Alpha", txtAlpha_}};
  int r = 0;
  for (const auto& [caption, widget] : rows) {
    grid->addWidget(new QLabel(tr(caption), this), r / 2, (r % 2) * 2);
    grid->addWidget(widget, r / 2, (r % 2) * 2 + 1);
    ++r;
  }
  outer->addWidget(Buttons(this));
  const SphereForm f = NewSphereForm();
  txtCenter_->setText(Q(f.centerId));
  txtPoint_->setText(Q(f.pointId));
  txtAFrom_->setText(Q(f.aFrom));
  txtATo_->setText(Q(f.aTo));
  txtBFrom_->setText(Q(f.bFrom));
  txtBTo_->setText(Q(f.bTo));
  txtAlpha_->setText(Q(f.alpha));
  cmdColor_->setColor(f.color);
}

SphereForm frmSphere::Form() const {
  SphereForm f;
  f.centerId = S(txtCenter_);
  f.pointId = S(txtPoint_);
  f.aFrom = S(txtAFrom_);
  f.aTo = S(txtATo_);
  f.bFrom = S(txtBFrom_);
  f.bTo = S(txtBTo_);
  f.alpha = S(txtAlpha_);
  f.color = cmdColor_->color();
  return f;
}

void frmSphere::accept() {
  MakeCanvasCurrent(this);
  SphereForm form = Form();
  SweptConfirm result = SweptConfirm::Stay;
  if (!RunGuarded([&] { result = ConfirmSphereForm(form); })) return;
  if (result != SweptConfirm::Done) return;
  QDialog::accept();
}

void InstallSweptForms(QMainWindow* mainWindow) {
  InstallSingleFormOpener<frmRot>(mainWindow, &SetRotFormOpener);
  InstallSingleFormOpener<frmStretch>(mainWindow, &SetStretchFormOpener);
  InstallSingleFormOpener<frmSphere>(mainWindow, &SetSphereFormOpener);
}

}  // namespace vt::app
