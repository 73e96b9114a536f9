// frmF6: the kind (curve or surface), the coordinate system, the list of
// forms, the fields of the form with their captions, and the look of the
// surface in its tabs (colour, material, transparency, texture, field), the
// clip box and the tangent planes and normals.
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
#include <utility>

#include "app/canvas.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "geometry/dialogs/property_forms.h"
#include "graphs/dialogs/curve_forms.h"
#include "graphs/dialogs/form_opener.h"
#include "graphs/dialogs/look_tabs.h"
#include "render/material.h"

namespace vt::app {

namespace {

QLabel* Label(QWidget* parent, const QString& name) {
  auto* l = new QLabel(parent);
  l->setObjectName(name);
  return l;
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
  txtFormula1_ = FormField(this, "txtFormula1", 260);
  txtFormula2_ = FormField(this, "txtFormula2", 260);
  txtFormula3_ = FormField(this, "txtFormula3", 260);
  grid->addWidget(lblFormula1_, 0, 0);
  grid->addWidget(txtFormula1_, 0, 1, 1, 5);
  grid->addWidget(lblFormula2_, 1, 0);
  grid->addWidget(txtFormula2_, 1, 1, 1, 5);
  grid->addWidget(lblFormula3_, 2, 0);
  grid->addWidget(txtFormula3_, 2, 1, 1, 5);
  // The pad beside each formula field, shown with it.
  int row = 0;
  for (auto [label, field] : {std::pair{lblFormula1_, txtFormula1_}, std::pair{lblFormula2_, txtFormula2_},
                              std::pair{lblFormula3_, txtFormula3_}}) {
    QPushButton* pad =
        PadButton(this, field, QString("cmdPad%1").arg(row + 1), [label = label] { return label->text(); });
    grid->addWidget(pad, row++, 6);
    pads_.push_back(pad);
  }
  QLabel** labels[9] = {&lblMinU_, &lblMaxU_, &lblStepsU_, &lblMinV_, &lblMaxV_, &lblStepsV_, &lblMinW_, &lblMaxW_, &lblStepsW_};
  QLineEdit** fields[9] = {&txtMinU_, &txtMaxU_, &txtStepsU_, &txtMinV_, &txtMaxV_, &txtStepsV_, &txtMinW_, &txtMaxW_, &txtStepsW_};
  const char* const names[9] = {"MinU", "MaxU", "StepsU", "MinV", "MaxV", "StepsV", "MinW", "MaxW", "StepsW"};
  for (int k = 0; k < 9; ++k) {
    *labels[k] = Label(this, QString("lbl") + names[k]);
    *fields[k] = FormField(this, QString("txt") + names[k]);
    grid->addWidget(*labels[k], 3 + k / 3, (k % 3) * 2);
    grid->addWidget(*fields[k], 3 + k / 3, (k % 3) * 2 + 1);
  }

  tabs_ = new QTabWidget(this);
  tabs_->setObjectName("tabLook");
  look_.AddTo(tabs_);
  tabs_->addTab(BuildFieldTab(), tr("Field"));
  tabs_->addTab(BuildClipTab(), tr("Clip"));
  tabs_->addTab(BuildTangentTab(), tr("Tangents"));
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

QWidget* frmF6::BuildFieldTab() {
  auto* page = new QWidget(this);
  auto* grid = new QGridLayout(page);
  chkContour_ = new QCheckBox(tr("Contours"), page);
  chkContour_->setObjectName("chkContour");
  chkVector_ = new QCheckBox(tr("Vectors"), page);
  chkVector_->setObjectName("chkVector");
  chkColormap_ = new QCheckBox(tr("Color map"), page);
  chkColormap_->setObjectName("chkColormap");
  txtContourLevel_ = FormField(page, "txtContourLevel");
  grid->addWidget(chkColormap_, 0, 0);
  grid->addWidget(chkVector_, 1, 0);
  grid->addWidget(chkContour_, 2, 0);
  grid->addWidget(new QLabel(tr("Levels"), page), 3, 0);
  grid->addWidget(txtContourLevel_, 3, 1);
  return page;
}

QWidget* frmF6::BuildClipTab() {
  auto* page = new QWidget(this);
  auto* grid = new QGridLayout(page);
  chkClip_ = new QCheckBox(tr("Clip to the box"), page);
  chkClip_->setObjectName("chkClip");
  grid->addWidget(chkClip_, 0, 0, 1, 4);
  const char* const names[6] = {"txtClipMinX", "txtClipMaxX", "txtClipMinY", "txtClipMaxY", "txtClipMinZ", "txtClipMaxZ"};
  const char* const captions[6] = {"Min x", "Max x", "Min y", "Max y", "Min z", "Max z"};
  for (int k = 0; k < 6; ++k) {
    txtClip_[k] = FormField(page, names[k]);
    grid->addWidget(new QLabel(tr(captions[k]), page), 1 + k / 2, (k % 2) * 2);
    grid->addWidget(txtClip_[k], 1 + k / 2, (k % 2) * 2 + 1);
    connect(chkClip_, &QCheckBox::toggled, txtClip_[k], &QLineEdit::setEnabled);
  }
  return page;
}

QWidget* frmF6::BuildTangentTab() {
  auto* page = new QWidget(this);
  auto* grid = new QGridLayout(page);
  chkTangent_ = new QCheckBox(tr("Tangent planes at (x,y)"), page);
  chkTangent_->setObjectName("chkTangent");
  txtTangentAt_ = FormField(page, "txtTangentAt", 220);
  chkNormal_ = new QCheckBox(tr("Normals at (x,y)"), page);
  chkNormal_->setObjectName("chkNormal");
  txtNormalAt_ = FormField(page, "txtNormalAt", 220);
  txtTangentAt_->setPlaceholderText(tr("1,0; -1,2"));
  txtNormalAt_->setPlaceholderText(tr("1,0; -1,2"));
  grid->addWidget(chkTangent_, 0, 0);
  grid->addWidget(txtTangentAt_, 0, 1);
  grid->addWidget(chkNormal_, 1, 0);
  grid->addWidget(txtNormalAt_, 1, 1);
  auto* note = new QLabel(tr("For z=f(x,y): places as x,y pairs parted by ;"), page);
  grid->addWidget(note, 2, 0, 1, 2);
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
  auto show = [this](QLabel* label, QLineEdit* field, const std::string& caption) {
    label->setText(Q(caption));
    label->setVisible(!caption.empty());
    field->setVisible(!caption.empty());
    const int row = field == txtFormula1_ ? 0 : field == txtFormula2_ ? 1 : 2;
    if (row < static_cast<int>(pads_.size())) pads_[static_cast<size_t>(row)]->setVisible(!caption.empty());
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
  // Tangent planes and normals come from the slopes of z=f(x,y).
  const bool slopes = graphType == 2 && CoordType() == 3 && form == 2;
  for (QWidget* w : std::initializer_list<QWidget*>{chkTangent_, txtTangentAt_, chkNormal_, txtNormalAt_})
    w->setEnabled(slopes);
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
  look_.Read(f);
  f.showContour = chkContour_->isChecked();
  f.showVector = chkVector_->isChecked();
  f.showColormap = chkColormap_->isChecked();
  f.contourLevel = S(txtContourLevel_);
  f.clip = chkClip_->isChecked();
  std::string* clip[6] = {&f.clipMinX, &f.clipMaxX, &f.clipMinY, &f.clipMaxY, &f.clipMinZ, &f.clipMaxZ};
  for (int k = 0; k < 6; ++k) *clip[k] = S(txtClip_[k]);
  f.showTangent = chkTangent_->isChecked();
  f.tangentAt = S(txtTangentAt_);
  f.showNormal = chkNormal_->isChecked();
  f.normalAt = S(txtNormalAt_);
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
  look_.Show(f);
  chkContour_->setChecked(f.showContour);
  chkVector_->setChecked(f.showVector);
  chkColormap_->setChecked(f.showColormap);
  txtContourLevel_->setText(Q(f.contourLevel));
  chkClip_->setChecked(f.clip);
  const std::string* clip[6] = {&f.clipMinX, &f.clipMaxX, &f.clipMinY, &f.clipMaxY, &f.clipMinZ, &f.clipMaxZ};
  for (int k = 0; k < 6; ++k) {
    txtClip_[k]->setText(Q(*clip[k]));
    txtClip_[k]->setEnabled(f.clip);
  }
  chkTangent_->setChecked(f.showTangent);
  txtTangentAt_->setText(Q(f.tangentAt));
  chkNormal_->setChecked(f.showNormal);
  txtNormalAt_->setText(Q(f.normalAt));
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
