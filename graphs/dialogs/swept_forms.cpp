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
#include "graphs/surface_form.h"
#include "render/material.h"

namespace vt::app {

namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }
std::string S(const QLineEdit* e) { return e->text().toStdString(); }

QLineEdit* Field(QWidget* parent, const QString& name, int width = 90) {
  auto* e = new QLineEdit(parent);
  e->setObjectName(name);
  e->setMinimumWidth(width);
  return e;
}

QComboBox* Choice(QWidget* parent, const QString& name, const QStringList& items) {
  auto* c = new QComboBox(parent);
  c->setObjectName(name);
  c->addItems(items);
  return c;
}

ColorButton* Color(QWidget* parent, const QString& name) {
  auto* b = new ColorButton(parent);
  b->setObjectName(name);
  b->setAutoDefault(false);
  return b;
}

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
  txtObject_ = Field(this, "txtObject");
  grid->addWidget(new QLabel(tr("Object"), this), row, 0);
  grid->addWidget(txtObject_, row++, 1);
  if (rotation) {
    txtCenter_ = Field(this, "txtCenter");
    txtAngle_ = Field(this, "txtAngle", 160);
    grid->addWidget(new QLabel(tr("Axis or center"), this), row, 0);
    grid->addWidget(txtCenter_, row++, 1);
    grid->addWidget(new QLabel(tr("Angle"), this), row, 0);
    grid->addWidget(txtAngle_, row++, 1);
  } else {
    txtDX_ = Field(this, "txtDX", 160);
    txtDY_ = Field(this, "txtDY", 160);
    txtDZ_ = Field(this, "txtDZ", 160);
    grid->addWidget(new QLabel(tr("dx"), this), row, 0);
    grid->addWidget(txtDX_, row++, 1);
    grid->addWidget(new QLabel(tr("dy"), this), row, 0);
    grid->addWidget(txtDY_, row++, 1);
    grid->addWidget(new QLabel(tr("dz"), this), row, 0);
    grid->addWidget(txtDZ_, row++, 1);
  }
  txtSteps_ = Field(this, "txtSteps");
  grid->addWidget(new QLabel(tr("Steps"), this), row, 0);
  grid->addWidget(txtSteps_, row++, 1);

  auto* tabs = new QTabWidget(this);
  tabs->setObjectName("tabLook");
  auto* color = new QWidget(tabs);
  auto* cg = new QGridLayout(color);
  cboFillStyle_ = Choice(color, "cboFillStyle",
                         {tr("Two colors along y"), tr("Two colors along z"), tr("Two colors along x"),
                          tr("One color"), tr("Color ramp")});
  cmdFirstColor_ = Color(color, "cmdFirstColor");
  cmdSecondColor_ = Color(color, "cmdSecondColor");
  QStringList ramps;
  for (const char* n : kRampNames) ramps << QString(n);
  cboRamp_ = Choice(color, "cboRamp", ramps);
  cboShow_ = Choice(color, "cboShow", {tr("Points"), tr("Wire"), tr("Filled")});
  cboSmoothness_ = Choice(color, "cboSmoothness", {tr("Flat"), tr("Flat (fine)"), tr("Smooth")});
  const std::pair<const char*, QWidget*> rows[] = {{"Coloring", cboFillStyle_}, {"First color", cmdFirstColor_},
                                                   {"Second color", cmdSecondColor_}, {"Ramp", cboRamp_},
                                                   {"Show", cboShow_}, {"Smoothness", cboSmoothness_}};
  int r = 0;
  for (const auto& [caption, widget] : rows) {
    cg->addWidget(new QLabel(tr(caption), color), r, 0);
    cg->addWidget(widget, r++, 1);
  }
  tabs->addTab(color, tr("Color"));

  auto* material = new QWidget(tabs);
  auto* mb = new QVBoxLayout(material);
  QStringList names;
  names << tr("None");
  for (const char* n : kMaterialSchemeNames) names << QString(n);
  cboMaterial_ = Choice(material, "cboMaterial", names);
  mb->addWidget(cboMaterial_);
  mb->addStretch(1);
  tabs->addTab(material, tr("Material"));

  auto* trans = new QWidget(tabs);
  auto* tg = new QGridLayout(trans);
  chkTrans_ = new QCheckBox(tr("Transparent"), trans);
  chkTrans_->setObjectName("chkTrans");
  txtAlpha_ = Field(trans, "txtAlpha");
  tg->addWidget(chkTrans_, 0, 0, 1, 2);
  tg->addWidget(new QLabel(tr("Alpha"), trans), 1, 0);
  tg->addWidget(txtAlpha_, 1, 1);
  tabs->addTab(trans, tr("Transparency"));

  auto* texture = new QWidget(tabs);
  auto* xg = new QGridLayout(texture);
  chkTexture_ = new QCheckBox(tr("Texture"), texture);
  chkTexture_->setObjectName("chkTexture");
  txtTexName_ = Field(texture, "txtTexName", 220);
  auto* browse = new QPushButton(tr("..."), texture);
  browse->setObjectName("cmdTexFile");
  browse->setAutoDefault(false);
  optTexAlone_ = new QRadioButton(tr("Texture only"), texture);
  optTexAlone_->setObjectName("optTexAlone");
  optTexColor_ = new QRadioButton(tr("Texture with color"), texture);
  optTexColor_->setObjectName("optTexColor");
  xg->addWidget(chkTexture_, 0, 0, 1, 2);
  xg->addWidget(txtTexName_, 1, 0);
  xg->addWidget(browse, 1, 1);
  xg->addWidget(optTexAlone_, 2, 0);
  xg->addWidget(optTexColor_, 3, 0);
  connect(browse, &QPushButton::clicked, this, [this] {
    const std::string path = PickTextureFile();
    if (!path.empty()) txtTexName_->setText(Q(path));
  });
  tabs->addTab(texture, tr("Texture"));
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
  f.fillStyle = cboFillStyle_->currentIndex() + 1;
  f.firstColor = cmdFirstColor_->color();
  f.secondColor = cmdSecondColor_->color();
  f.rampIndex = cboRamp_->currentIndex();
  f.material = cboMaterial_->currentIndex();
  f.show = cboShow_->currentIndex() + 1;
  f.smoothness = cboSmoothness_->currentIndex() + 1;
  f.showTrans = chkTrans_->isChecked();
  f.transAlpha = S(txtAlpha_);
  f.showTex = chkTexture_->isChecked();
  f.texName = S(txtTexName_);
  f.texMode = optTexColor_->isChecked() ? 2 : 1;
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
  cboFillStyle_->setCurrentIndex(std::clamp(f.fillStyle, 1, 5) - 1);
  cmdFirstColor_->setColor(f.firstColor);
  cmdSecondColor_->setColor(f.secondColor);
  cboRamp_->setCurrentIndex(std::clamp(f.rampIndex, 0, kRampCount - 1));
  cboMaterial_->setCurrentIndex(std::clamp(f.material, 0, kMaterialSchemeCount));
  cboShow_->setCurrentIndex(std::clamp(f.show, 1, 3) - 1);
  cboSmoothness_->setCurrentIndex(std::clamp(f.smoothness, 1, 3) - 1);
  chkTrans_->setChecked(f.showTrans);
  txtAlpha_->setText(Q(f.transAlpha));
  chkTexture_->setChecked(f.showTex);
  txtTexName_->setText(Q(f.texName));
  (f.texMode == 2 ? optTexColor_ : optTexAlone_)->setChecked(true);
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
  txtCenter_ = Field(this, "txtCenter");
  txtPoint_ = Field(this, "txtPoint");
  txtAFrom_ = Field(this, "txtAFrom");
  txtATo_ = Field(this, "txtATo");
  txtBFrom_ = Field(this, "txtBFrom");
  txtBTo_ = Field(this, "txtBTo");
  txtAlpha_ = Field(this, "txtAlpha");
  cmdColor_ = Color(this, "cmdColor");
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
