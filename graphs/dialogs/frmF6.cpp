// frmF6: the kind (curve or surface), the coordinate system, the list of
// forms, the fields of the form with their captions, and the look of the
// surface in five tabs (colour, material, transparency, texture, field).
#include "graphs/dialogs/frmF6.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

#include "app/canvas.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "geometry/dialogs/property_forms.h"
#include "graphs/dialogs/form_opener.h"
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

QLabel* Label(QWidget* parent, const QString& name) {
  auto* l = new QLabel(parent);
  l->setObjectName(name);
  return l;
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

}  // namespace

frmF6::frmF6(QWidget* parent, const std::string& editId) : QDialog(parent), editId_(editId) {
  setObjectName("frmF6");
  setWindowTitle(editId.empty() ? tr("Function Graph in Space") : tr("Function Graph in Space - %1").arg(Q(editId)));
  setAttribute(Qt::WA_DeleteOnClose);
  setModal(false);
  BuildFields();
  SurfaceForm form = NewSurfaceForm();
  if (!editId.empty())
    if (const CSurface* s = Doc.Surfaces.FindById(editId)) form = LoadSurfaceForm(*s);
  ShowForm(form);
}

void frmF6::BuildFields() {
  auto* outer = new QVBoxLayout(this);
  auto* top = new QHBoxLayout();
  outer->addLayout(top);

  auto* kind = new QGroupBox(tr("Type"), this);
  auto* kindBox = new QVBoxLayout(kind);
  optCurve_ = new QRadioButton(tr("Curve"), kind);
  optCurve_->setObjectName("optCurve");
  optSurface_ = new QRadioButton(tr("Surface"), kind);
  optSurface_->setObjectName("optSurface");
  kindBox->addWidget(optCurve_);
  kindBox->addWidget(optSurface_);
  top->addWidget(kind);

  auto* system = new QGroupBox(tr("Coordinates"), this);
  auto* systemBox = new QVBoxLayout(system);
  optCartesian_ = new QRadioButton(tr("Cartesian"), system);
  optCartesian_->setObjectName("optCartesian");
  optCylindrical_ = new QRadioButton(tr("Cylindrical"), system);
  optCylindrical_->setObjectName("optCylindrical");
  optSpherical_ = new QRadioButton(tr("Spherical"), system);
  optSpherical_->setObjectName("optSpherical");
  systemBox->addWidget(optCartesian_);
  systemBox->addWidget(optCylindrical_);
  systemBox->addWidget(optSpherical_);
  top->addWidget(system);

  lstForm_ = new QListWidget(this);
  lstForm_->setObjectName("lstForm");
  lstForm_->setMinimumWidth(260);
  lstForm_->setMaximumHeight(90);
  top->addWidget(lstForm_, 1);

  auto* grid = new QGridLayout();
  outer->addLayout(grid);
  lblFormula1_ = Label(this, "lblFormula1");
  lblFormula2_ = Label(this, "lblFormula2");
  lblFormula3_ = Label(this, "lblFormula3");
  txtFormula1_ = Field(this, "txtFormula1", 260);
  txtFormula2_ = Field(this, "txtFormula2", 260);
  txtFormula3_ = Field(this, "txtFormula3", 260);
  grid->addWidget(lblFormula1_, 0, 0);
  grid->addWidget(txtFormula1_, 0, 1, 1, 5);
  grid->addWidget(lblFormula2_, 1, 0);
  grid->addWidget(txtFormula2_, 1, 1, 1, 5);
  grid->addWidget(lblFormula3_, 2, 0);
  grid->addWidget(txtFormula3_, 2, 1, 1, 5);
  QLabel** labels[9] = {&lblMinU_, &lblMaxU_, &lblStepsU_, &lblMinV_, &lblMaxV_, &lblStepsV_, &lblMinW_, &lblMaxW_, &lblStepsW_};
  QLineEdit** fields[9] = {&txtMinU_, &txtMaxU_, &txtStepsU_, &txtMinV_, &txtMaxV_, &txtStepsV_, &txtMinW_, &txtMaxW_, &txtStepsW_};
  const char* const names[9] = {"MinU", "MaxU", "StepsU", "MinV", "MaxV", "StepsV", "MinW", "MaxW", "StepsW"};
  for (int k = 0; k < 9; ++k) {
    *labels[k] = Label(this, QString("lbl") + names[k]);
    *fields[k] = Field(this, QString("txt") + names[k]);
    grid->addWidget(*labels[k], 3 + k / 3, (k % 3) * 2);
    grid->addWidget(*fields[k], 3 + k / 3, (k % 3) * 2 + 1);
  }

  tabs_ = new QTabWidget(this);
  tabs_->setObjectName("tabLook");
  tabs_->addTab(BuildColorTab(), tr("Color"));
  tabs_->addTab(BuildMaterialTab(), tr("Material"));
  tabs_->addTab(BuildTransparencyTab(), tr("Transparency"));
  tabs_->addTab(BuildTextureTab(), tr("Texture"));
  tabs_->addTab(BuildFieldTab(), tr("Field"));
  outer->addWidget(tabs_);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->setObjectName("buttons");
  outer->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &frmF6::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &frmF6::reject);

  for (QRadioButton* b : {optCurve_, optSurface_, optCartesian_, optCylindrical_, optSpherical_})
    connect(b, &QRadioButton::toggled, this, [this](bool on) {
      if (on && !updating_) UpdateFormList();
    });
  connect(lstForm_, &QListWidget::currentRowChanged, this, [this] {
    if (!updating_) UpdateLabels();
  });
}

QWidget* frmF6::BuildColorTab() {
  auto* page = new QWidget(this);
  auto* grid = new QGridLayout(page);
  cboFillStyle_ = Choice(page, "cboFillStyle",
                         {tr("Two colors along y"), tr("Two colors along z"), tr("Two colors along x"),
                          tr("One color"), tr("Color ramp")});
  cmdFirstColor_ = Color(page, "cmdFirstColor");
  cmdSecondColor_ = Color(page, "cmdSecondColor");
  QStringList ramps;
  for (const char* n : kRampNames) ramps << QString(n);
  cboRamp_ = Choice(page, "cboRamp", ramps);
  cboShow_ = Choice(page, "cboShow", {tr("Points"), tr("Wire"), tr("Filled")});
  cboSmoothness_ = Choice(page, "cboSmoothness", {tr("Flat"), tr("Flat (fine)"), tr("Smooth")});
  grid->addWidget(new QLabel(tr("Coloring"), page), 0, 0);
  grid->addWidget(cboFillStyle_, 0, 1);
  grid->addWidget(new QLabel(tr("First color"), page), 1, 0);
  grid->addWidget(cmdFirstColor_, 1, 1);
  grid->addWidget(new QLabel(tr("Second color"), page), 2, 0);
  grid->addWidget(cmdSecondColor_, 2, 1);
  grid->addWidget(new QLabel(tr("Ramp"), page), 3, 0);
  grid->addWidget(cboRamp_, 3, 1);
  grid->addWidget(new QLabel(tr("Show"), page), 4, 0);
  grid->addWidget(cboShow_, 4, 1);
  grid->addWidget(new QLabel(tr("Smoothness"), page), 5, 0);
  grid->addWidget(cboSmoothness_, 5, 1);
  return page;
}

QWidget* frmF6::BuildMaterialTab() {
  auto* page = new QWidget(this);
  auto* box = new QVBoxLayout(page);
  QStringList names;
  names << tr("None");
  for (const char* n : kMaterialSchemeNames) names << QString(n);
  cboMaterial_ = Choice(page, "cboMaterial", names);
  box->addWidget(cboMaterial_);
  box->addStretch(1);
  return page;
}

QWidget* frmF6::BuildTransparencyTab() {
  auto* page = new QWidget(this);
  auto* grid = new QGridLayout(page);
  chkTrans_ = new QCheckBox(tr("Transparent"), page);
  chkTrans_->setObjectName("chkTrans");
  txtAlpha_ = Field(page, "txtAlpha");
  grid->addWidget(chkTrans_, 0, 0, 1, 2);
  grid->addWidget(new QLabel(tr("Alpha"), page), 1, 0);
  grid->addWidget(txtAlpha_, 1, 1);
  return page;
}

QWidget* frmF6::BuildTextureTab() {
  auto* page = new QWidget(this);
  auto* grid = new QGridLayout(page);
  chkTexture_ = new QCheckBox(tr("Texture"), page);
  chkTexture_->setObjectName("chkTexture");
  txtTexName_ = Field(page, "txtTexName", 220);
  auto* browse = new QPushButton(tr("..."), page);
  browse->setObjectName("cmdTexFile");
  browse->setAutoDefault(false);
  optTexAlone_ = new QRadioButton(tr("Texture only"), page);
  optTexAlone_->setObjectName("optTexAlone");
  optTexColor_ = new QRadioButton(tr("Texture with color"), page);
  optTexColor_->setObjectName("optTexColor");
  grid->addWidget(chkTexture_, 0, 0, 1, 2);
  grid->addWidget(txtTexName_, 1, 0);
  grid->addWidget(browse, 1, 1);
  grid->addWidget(optTexAlone_, 2, 0);
  grid->addWidget(optTexColor_, 3, 0);
  connect(browse, &QPushButton::clicked, this, [this] {
    const std::string path = PickTextureFile();
    if (!path.empty()) {
      txtTexName_->setText(Q(path));
      chkTexture_->setChecked(true);
    }
  });
  return page;
}

QWidget* frmF6::BuildFieldTab() {
  auto* page = new QWidget(this);
  auto* grid = new QGridLayout(page);
  chkContour_ = new QCheckBox(tr("Contours"), page);
  chkContour_->setObjectName("chkContour");
  chkVector_ = new QCheckBox(tr("Vectors"), page);
  chkVector_->setObjectName("chkVector");
  chkColormap_ = new QCheckBox(tr("Color map"), page);
  chkColormap_->setObjectName("chkColormap");
  txtContourLevel_ = Field(page, "txtContourLevel");
  grid->addWidget(chkColormap_, 0, 0);
  grid->addWidget(chkVector_, 1, 0);
  grid->addWidget(chkContour_, 2, 0);
  grid->addWidget(new QLabel(tr("Levels"), page), 3, 0);
  grid->addWidget(txtContourLevel_, 3, 1);
  return page;
}

int frmF6::GraphType() const { return optCurve_->isChecked() ? 1 : 2; }

int frmF6::CoordType() const {
  if (optCylindrical_->isChecked()) return 4;
  if (optSpherical_->isChecked()) return 5;
  return 3;
}

void frmF6::UpdateFormList() {
  const bool was = updating_;
  updating_ = true;
  const int row = lstForm_->currentRow();
  lstForm_->clear();
  for (const std::string& n : SurfaceFormNames(GraphType(), CoordType())) lstForm_->addItem(Q(n));
  lstForm_->setCurrentRow(row >= 0 && row < lstForm_->count() ? row : 0);
  updating_ = was;
  UpdateLabels();
}

void frmF6::UpdateLabels() {
  const int graphType = GraphType();
  const int form = SurfaceFunFormOfListIndex(graphType, std::max(lstForm_->currentRow(), 0));
  const SurfaceFieldLabels l = SurfaceLabels(graphType, CoordType(), form);
  auto show = [](QLabel* label, QLineEdit* field, const std::string& caption) {
    label->setText(Q(caption));
    label->setVisible(!caption.empty());
    field->setVisible(!caption.empty());
  };
  show(lblFormula1_, txtFormula1_, l.formula1);
  show(lblFormula2_, txtFormula2_, l.formula2);
  show(lblFormula3_, txtFormula3_, l.formula3);
  auto range = [&](const std::string& var, QLabel* a, QLineEdit* fa, QLabel* b, QLineEdit* fb, QLabel* c,
                   QLineEdit* fc) {
    show(a, fa, var.empty() ? "" : "Min " + var);
    show(b, fb, var.empty() ? "" : "Max " + var);
    show(c, fc, var.empty() ? "" : "Steps " + var);
  };
  range(l.varU, lblMinU_, txtMinU_, lblMaxU_, txtMaxU_, lblStepsU_, txtStepsU_);
  range(l.varV, lblMinV_, txtMinV_, lblMaxV_, txtMaxV_, lblStepsV_, txtStepsV_);
  range(l.varW, lblMinW_, txtMinW_, lblMaxW_, txtMaxW_, lblStepsW_, txtStepsW_);
}

SurfaceForm frmF6::Form() const {
  SurfaceForm f;
  f.graphType = GraphType();
  f.coordType = CoordType();
  f.listIndex = std::max(lstForm_->currentRow(), 0);
  f.formula1 = S(txtFormula1_);
  f.formula2 = S(txtFormula2_);
  f.formula3 = S(txtFormula3_);
  f.minU = S(txtMinU_);
  f.maxU = S(txtMaxU_);
  f.stepsU = S(txtStepsU_);
  f.minV = S(txtMinV_);
  f.maxV = S(txtMaxV_);
  f.stepsV = S(txtStepsV_);
  f.minW = S(txtMinW_);
  f.maxW = S(txtMaxW_);
  f.stepsW = S(txtStepsW_);
  // The blends run along rendering x, y, z: the user's y, z, x.
  f.fillStyle = std::clamp(cboFillStyle_->currentIndex(), 0, 4) + 1;
  f.firstColor = cmdFirstColor_->color();
  f.secondColor = cmdSecondColor_->color();
  f.rampIndex = std::max(cboRamp_->currentIndex(), 0);
  f.material = std::max(cboMaterial_->currentIndex(), 0);
  f.show = cboShow_->currentIndex() + 1;
  f.smoothness = cboSmoothness_->currentIndex() + 1;
  f.showTrans = chkTrans_->isChecked();
  f.transAlpha = S(txtAlpha_);
  f.showTex = chkTexture_->isChecked();
  f.texName = S(txtTexName_);
  f.texMode = optTexColor_->isChecked() ? 2 : 1;
  f.showContour = chkContour_->isChecked();
  f.showVector = chkVector_->isChecked();
  f.showColormap = chkColormap_->isChecked();
  f.contourLevel = S(txtContourLevel_);
  return f;
}

void frmF6::ShowForm(const SurfaceForm& f) {
  updating_ = true;
  (f.graphType == 1 ? optCurve_ : optSurface_)->setChecked(true);
  (f.coordType == 4 ? optCylindrical_ : f.coordType == 5 ? optSpherical_ : optCartesian_)->setChecked(true);
  lstForm_->clear();
  for (const std::string& n : SurfaceFormNames(f.graphType, f.coordType)) lstForm_->addItem(Q(n));
  lstForm_->setCurrentRow(std::clamp(f.listIndex, 0, lstForm_->count() - 1));
  updating_ = false;
  txtFormula1_->setText(Q(f.formula1));
  txtFormula2_->setText(Q(f.formula2));
  txtFormula3_->setText(Q(f.formula3));
  txtMinU_->setText(Q(f.minU));
  txtMaxU_->setText(Q(f.maxU));
  txtStepsU_->setText(Q(f.stepsU));
  txtMinV_->setText(Q(f.minV));
  txtMaxV_->setText(Q(f.maxV));
  txtStepsV_->setText(Q(f.stepsV));
  txtMinW_->setText(Q(f.minW));
  txtMaxW_->setText(Q(f.maxW));
  txtStepsW_->setText(Q(f.stepsW));
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
  chkContour_->setChecked(f.showContour);
  chkVector_->setChecked(f.showVector);
  chkColormap_->setChecked(f.showColormap);
  txtContourLevel_->setText(Q(f.contourLevel));
  UpdateLabels();
}

void frmF6::accept() {
  if (Canvas* canvas = parentWidget() ? parentWidget()->findChild<Canvas*>() : nullptr) canvas->MakeCurrent();
  SurfaceForm form = Form();
  SurfaceConfirm result = SurfaceConfirm::Stay;
  if (!RunGuarded([&] { result = ConfirmSurfaceForm(form, editId_); })) return;
  if (result == SurfaceConfirm::Stay) {
    ShowForm(form);
    return;
  }
  QDialog::accept();
}

void frmF6::done(int result) {
  if (EditMode && !editId_.empty() && EditObjectId == editId_) EditMode = false;
  QDialog::done(result);
}

void InstallSurfaceForms(QMainWindow* mainWindow) {
  InstallSingleFormOpener<frmF6>(mainWindow, &SetSurfaceFormOpener);
}

}  // namespace vt::app
