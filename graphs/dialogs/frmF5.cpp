// frmF5: the coordinate system, the list of forms, the fields of the form
// with their labels, the look of the curve, and the overlays in four tabs.
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "app/canvas.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "geometry/dialogs/property_forms.h"
#include "geometry/properties.h"
#include "graphs/dialogs/curve_forms.h"
#include "graphs/dialogs/look_tabs.h"

namespace vt::app {

namespace {

QLineEdit* Field(QWidget* parent, const QString& name, int width = 120) { return FormField(parent, name, width); }

QLabel* Label(QWidget* parent, const QString& name, const QString& text = QString()) {
  auto* l = new QLabel(text, parent);
  l->setObjectName(name);
  return l;
}

QComboBox* Choice(QWidget* parent, const QString& name, const std::vector<std::string>& items) {
  auto* c = new QComboBox(parent);
  c->setObjectName(name);
  for (const std::string& s : items) c->addItem(Q(s));
  return c;
}

void SetChoice(QComboBox* box, int oneBased) {
  box->setCurrentIndex(oneBased >= 1 && oneBased <= box->count() ? oneBased - 1 : 0);
}

}  // namespace

frmF5::frmF5(QWidget* parent, const std::string& editId) : QDialog(parent), editId_(editId) {
  setObjectName("frmF5");
  setWindowTitle(editId.empty() ? tr("Function Curve") : tr("Function Curve - %1").arg(Q(editId)));
  setAttribute(Qt::WA_DeleteOnClose);
  setModal(false);
  BuildFields();
  CurveForm form = NewCurveForm();
  if (!editId.empty())
    if (const CFunCurve* c = Doc.FunCurves.FindById(editId)) form = LoadCurveForm(*c);
  ShowForm(form);
}

void frmF5::BuildFields() {
  auto* outer = new QVBoxLayout(this);
  auto* top = new QHBoxLayout();
  outer->addLayout(top);

  // The coordinate system and the list of forms.
  auto* left = new QVBoxLayout();
  auto* coord = new QGroupBox(tr("Coordinate"), this);
  auto* coordLayout = new QHBoxLayout(coord);
  optCartesian_ = new QRadioButton(tr("Cartesian"), coord);
  optCartesian_->setObjectName("optCartesian");
  optPolar_ = new QRadioButton(tr("Polar"), coord);
  optPolar_->setObjectName("optPolar");
  coordLayout->addWidget(optCartesian_);
  coordLayout->addWidget(optPolar_);
  left->addWidget(coord);
  lstForm_ = new QListWidget(this);
  lstForm_->setObjectName("lstForm");
  lstForm_->setMaximumHeight(90);
  left->addWidget(lstForm_);
  top->addLayout(left);

  // The fields of the form.
  auto* grid = new QGridLayout();
  lblFormula1_ = Label(this, "lblFormula1");
  txtFormula1_ = Field(this, "txtFormula1", 220);
  cmdPad1_ = new QPushButton("...", this);
  cmdPad1_->setObjectName("cmdPad1");
  lblFormula2_ = Label(this, "lblFormula2");
  txtFormula2_ = Field(this, "txtFormula2", 220);
  cmdPad2_ = new QPushButton("...", this);
  cmdPad2_->setObjectName("cmdPad2");
  for (QPushButton* b : {cmdPad1_, cmdPad2_}) {
    b->setAutoDefault(false);
    b->setToolTip(tr("Expression pad"));
    b->setMaximumWidth(32);
  }
  grid->addWidget(lblFormula1_, 0, 0);
  grid->addWidget(txtFormula1_, 0, 1, 1, 3);
  grid->addWidget(cmdPad1_, 0, 4);
  grid->addWidget(lblFormula2_, 1, 0);
  grid->addWidget(txtFormula2_, 1, 1, 1, 3);
  grid->addWidget(cmdPad2_, 1, 4);
  lblMinU_ = Label(this, "lblMinU");
  txtMinU_ = Field(this, "txtMinU", 60);
  lblMaxU_ = Label(this, "lblMaxU");
  txtMaxU_ = Field(this, "txtMaxU", 60);
  lblSteps_ = Label(this, "lblSteps");
  txtSteps_ = Field(this, "txtSteps", 60);
  lblMinV_ = Label(this, "lblMinV");
  txtMinV_ = Field(this, "txtMinV", 60);
  lblMaxV_ = Label(this, "lblMaxV");
  txtMaxV_ = Field(this, "txtMaxV", 60);
  grid->addWidget(lblMinU_, 2, 0);
  grid->addWidget(txtMinU_, 2, 1);
  grid->addWidget(lblMaxU_, 2, 2);
  grid->addWidget(txtMaxU_, 2, 3);
  grid->addWidget(lblMinV_, 3, 0);
  grid->addWidget(txtMinV_, 3, 1);
  grid->addWidget(lblMaxV_, 3, 2);
  grid->addWidget(txtMaxV_, 3, 3);
  grid->addWidget(lblSteps_, 4, 0);
  grid->addWidget(txtSteps_, 4, 1);
  // The look of the curve.
  cmdLineColor_ = FormColor(this, "cmdLineColor");
  txtLineWidth_ = Field(this, "txtLineWidth", 40);
  cboLineStyle_ = Choice(this, "cboLineStyle", LineStyleNames());
  grid->addWidget(new QLabel(tr("Colour"), this), 5, 0);
  grid->addWidget(cmdLineColor_, 5, 1);
  grid->addWidget(new QLabel(tr("Width"), this), 5, 2);
  grid->addWidget(txtLineWidth_, 5, 3);
  grid->addWidget(new QLabel(tr("Style"), this), 6, 0);
  grid->addWidget(cboLineStyle_, 6, 1);
  top->addLayout(grid);

  tabOverlays_ = new QTabWidget(this);
  tabOverlays_->setObjectName("tabOverlays");
  tabOverlays_->addTab(BuildCurveTab(), tr("Curve"));
  tabOverlays_->addTab(BuildIntegralTab(), tr("Integral"));
  tabOverlays_->addTab(BuildPointsTab(), tr("Points"));
  tabOverlays_->addTab(BuildLinesTab(), tr("Lines"));
  outer->addWidget(tabOverlays_);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName("cmdOK");
  buttons->button(QDialogButtonBox::Cancel)->setObjectName("cmdCancel");
  buttons->button(QDialogButtonBox::Ok)->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  outer->addWidget(buttons);

  connect(optCartesian_, &QRadioButton::toggled, this, [this] { UpdateFormList(); });
  connect(lstForm_, &QListWidget::currentRowChanged, this, [this] { UpdateLabels(); });
  connect(cmdPad1_, &QPushButton::clicked, this, [this] { OpenPad(txtFormula1_); });
  connect(cmdPad2_, &QPushButton::clicked, this, [this] { OpenPad(txtFormula2_); });
}

frmF5::LineRow frmF5::AddLineRow(QGridLayout* grid, int row, const QString& key, const QString& caption) {
  LineRow r;
  QWidget* page = grid->parentWidget();
  r.show = new QCheckBox(caption, page);
  r.show->setObjectName("chk" + key);
  r.color = FormColor(page, "cmd" + key + "Color");
  r.width = Field(page, "txt" + key + "Width", 40);
  grid->addWidget(r.show, row, 0);
  grid->addWidget(r.color, row, 1);
  grid->addWidget(new QLabel(tr("Width"), page), row, 2);
  grid->addWidget(r.width, row, 3);
  return r;
}

frmF5::MarkRow frmF5::AddMarkRow(QGridLayout* grid, int row, const QString& key, const QString& caption) {
  MarkRow r;
  QWidget* page = grid->parentWidget();
  r.show = new QCheckBox(caption, page);
  r.show->setObjectName("chk" + key);
  r.color = FormColor(page, "cmd" + key + "Color");
  r.size = Field(page, "txt" + key + "Size", 40);
  r.symbol = Choice(page, "cbo" + key + "Symbol", SymbolNames());
  grid->addWidget(r.show, row, 0);
  grid->addWidget(r.color, row, 1);
  grid->addWidget(new QLabel(tr("Size"), page), row, 2);
  grid->addWidget(r.size, row, 3);
  grid->addWidget(r.symbol, row, 4);
  return r;
}

frmF5::PlaceRow frmF5::AddPlaceRow(QGridLayout* grid, int row, const QString& key, const QString& caption) {
  PlaceRow r;
  QWidget* page = grid->parentWidget();
  r.show = new QCheckBox(caption, page);
  r.show->setObjectName("chk" + key);
  r.color = FormColor(page, "cmd" + key + "Color");
  r.width = Field(page, "txt" + key + "Width", 40);
  r.posType = Choice(page, "cbo" + key + "PosType", {"At the values", "At the formula"});
  r.positions = Field(page, "txt" + key + "Positions", 100);
  r.positions->setToolTip(tr("Values separated by ;"));
  r.formula = Field(page, "txt" + key + "Formula", 80);
  grid->addWidget(r.show, row, 0);
  grid->addWidget(r.color, row, 1);
  grid->addWidget(r.width, row, 2);
  grid->addWidget(r.posType, row, 3);
  grid->addWidget(r.positions, row, 4);
  grid->addWidget(r.formula, row, 5);
  return r;
}

QWidget* frmF5::BuildCurveTab() {
  auto* page = new QWidget(this);
  auto* grid = new QGridLayout(page);
  chkCurve_ = new QCheckBox(tr("Show the curve"), page);
  chkCurve_->setObjectName("chkCurve");
  grid->addWidget(chkCurve_, 0, 0);
  inverse_ = AddLineRow(grid, 1, "Inverse", tr("Inverse"));
  derivative_ = AddLineRow(grid, 2, "Derivative", tr("Derivative"));
  parity_ = AddLineRow(grid, 3, "Parity", tr("f(-x)"));
  return page;
}

QWidget* frmF5::BuildIntegralTab() {
  auto* page = new QWidget(this);
  auto* grid = new QGridLayout(page);
  chkIntegral_ = new QCheckBox(tr("Integral"), page);
  chkIntegral_->setObjectName("chkIntegral");
  cmdIntColor_ = FormColor(page, "cmdIntegralColor");
  txtIntFrom_ = Field(page, "txtIntFrom", 50);
  txtIntTo_ = Field(page, "txtIntTo", 50);
  grid->addWidget(chkIntegral_, 0, 0);
  grid->addWidget(cmdIntColor_, 0, 1);
  grid->addWidget(new QLabel(tr("From"), page), 0, 2);
  grid->addWidget(txtIntFrom_, 0, 3);
  grid->addWidget(new QLabel(tr("To"), page), 0, 4);
  grid->addWidget(txtIntTo_, 0, 5);
  chkLength_ = new QCheckBox(tr("Length"), page);
  chkLength_->setObjectName("chkLength");
  txtLenFrom_ = Field(page, "txtLenFrom", 50);
  txtLenTo_ = Field(page, "txtLenTo", 50);
  grid->addWidget(chkLength_, 1, 0);
  grid->addWidget(new QLabel(tr("From"), page), 1, 2);
  grid->addWidget(txtLenFrom_, 1, 3);
  grid->addWidget(new QLabel(tr("To"), page), 1, 4);
  grid->addWidget(txtLenTo_, 1, 5);
  return page;
}

QWidget* frmF5::BuildPointsTab() {
  auto* page = new QWidget(this);
  auto* grid = new QGridLayout(page);
  roots_ = AddMarkRow(grid, 0, "Root", tr("Roots"));
  maxima_ = AddMarkRow(grid, 1, "Max", tr("Maxima"));
  minima_ = AddMarkRow(grid, 2, "Min", tr("Minima"));
  inflexions_ = AddMarkRow(grid, 3, "Inflexion", tr("Inflexions"));
  return page;
}

QWidget* frmF5::BuildLinesTab() {
  auto* page = new QWidget(this);
  auto* grid = new QGridLayout(page);
  tangents_ = AddPlaceRow(grid, 0, "Tangent", tr("Tangents"));
  normals_ = AddPlaceRow(grid, 1, "Normal", tr("Normals"));
  curvature_ = AddPlaceRow(grid, 2, "Curvature", tr("Curvature"));
  return page;
}

void frmF5::UpdateFormList() {
  const int row = std::max(lstForm_->currentRow(), 0);
  const QSignalBlocker block(lstForm_);
  lstForm_->clear();
  for (const std::string& name : CurveFormNames(optPolar_->isChecked() ? 2 : 1)) lstForm_->addItem(Q(name));
  lstForm_->setCurrentRow(row);
  UpdateLabels();
}

void frmF5::UpdateLabels() {
  const CurveFieldLabels l =
      CurveLabels(optPolar_->isChecked() ? 2 : 1, FunFormOfListIndex(std::max(lstForm_->currentRow(), 0)));
  auto set = [](QLabel* label, QWidget* field, const std::string& caption) {
    label->setText(Q(caption));
    label->setVisible(!caption.empty());
    field->setVisible(!caption.empty());
  };
  set(lblFormula1_, txtFormula1_, l.formula1);
  cmdPad1_->setVisible(!l.formula1.empty());
  set(lblFormula2_, txtFormula2_, l.formula2);
  cmdPad2_->setVisible(!l.formula2.empty());
  set(lblMinU_, txtMinU_, l.minU);
  set(lblMaxU_, txtMaxU_, l.maxU);
  set(lblSteps_, txtSteps_, l.steps);
  set(lblMinV_, txtMinV_, l.minV);
  set(lblMaxV_, txtMaxV_, l.maxV);
  // The overlays belong to the sampled forms.
  tabOverlays_->setEnabled(!l.steps.empty());
}

CurveForm frmF5::Form() const {
  CurveForm f = NewCurveForm();
  f.coordType = optPolar_->isChecked() ? 2 : 1;
  f.listIndex = std::max(lstForm_->currentRow(), 0);
  f.formula1 = S(txtFormula1_);
  f.formula2 = S(txtFormula2_);
  f.minU = S(txtMinU_);
  f.maxU = S(txtMaxU_);
  f.steps = S(txtSteps_);
  f.minV = S(txtMinV_);
  f.maxV = S(txtMaxV_);
  f.lineColor = cmdLineColor_->color();
  f.lineWidth = S(txtLineWidth_);
  f.lineStyle = cboLineStyle_->currentIndex() + 1;
  f.showCurve = chkCurve_->isChecked();
  auto line = [](const LineRow& r) { return CurveLineOverlay{r.show->isChecked(), r.color->color(), S(r.width)}; };
  auto mark = [](const MarkRow& r) {
    return CurveMarkOverlay{r.show->isChecked(), r.color->color(), S(r.size), r.symbol->currentIndex() + 1};
  };
  auto place = [](const PlaceRow& r) {
    return CurvePlaceOverlay{r.show->isChecked(), r.color->color(), S(r.width), r.posType->currentIndex() + 1,
                             S(r.positions), S(r.formula)};
  };
  f.inverse = line(inverse_);
  f.derivative = line(derivative_);
  f.parity = line(parity_);
  f.showIntegral = chkIntegral_->isChecked();
  f.intColor = cmdIntColor_->color();
  f.intFrom = S(txtIntFrom_);
  f.intTo = S(txtIntTo_);
  f.showLength = chkLength_->isChecked();
  f.lenFrom = S(txtLenFrom_);
  f.lenTo = S(txtLenTo_);
  f.roots = mark(roots_);
  f.maxima = mark(maxima_);
  f.minima = mark(minima_);
  f.inflexions = mark(inflexions_);
  f.tangents = place(tangents_);
  f.normals = place(normals_);
  f.curvature = place(curvature_);
  return f;
}

void frmF5::ShowForm(const CurveForm& f) {
  {
    const QSignalBlocker a(optCartesian_), b(optPolar_);
    optCartesian_->setChecked(f.coordType != 2);
    optPolar_->setChecked(f.coordType == 2);
  }
  lstForm_->setCurrentRow(-1);
  UpdateFormList();
  lstForm_->setCurrentRow(f.listIndex);
  txtFormula1_->setText(Q(f.formula1));
  txtFormula2_->setText(Q(f.formula2));
  txtMinU_->setText(Q(f.minU));
  txtMaxU_->setText(Q(f.maxU));
  txtSteps_->setText(Q(f.steps));
  txtMinV_->setText(Q(f.minV));
  txtMaxV_->setText(Q(f.maxV));
  cmdLineColor_->setColor(f.lineColor);
  txtLineWidth_->setText(Q(f.lineWidth));
  SetChoice(cboLineStyle_, f.lineStyle);
  chkCurve_->setChecked(f.showCurve);
  auto line = [](const LineRow& r, const CurveLineOverlay& o) {
    r.show->setChecked(o.show);
    r.color->setColor(o.color);
    r.width->setText(Q(o.width));
  };
  auto mark = [](const MarkRow& r, const CurveMarkOverlay& o) {
    r.show->setChecked(o.show);
    r.color->setColor(o.color);
    r.size->setText(Q(o.size));
    SetChoice(r.symbol, o.symbol);
  };
  auto place = [](const PlaceRow& r, const CurvePlaceOverlay& o) {
    r.show->setChecked(o.show);
    r.color->setColor(o.color);
    r.width->setText(Q(o.width));
    SetChoice(r.posType, o.posType);
    r.positions->setText(Q(o.positions));
    r.formula->setText(Q(o.formula));
  };
  line(inverse_, f.inverse);
  line(derivative_, f.derivative);
  line(parity_, f.parity);
  chkIntegral_->setChecked(f.showIntegral);
  cmdIntColor_->setColor(f.intColor);
  txtIntFrom_->setText(Q(f.intFrom));
  txtIntTo_->setText(Q(f.intTo));
  chkLength_->setChecked(f.showLength);
  txtLenFrom_->setText(Q(f.lenFrom));
  txtLenTo_->setText(Q(f.lenTo));
  mark(roots_, f.roots);
  mark(maxima_, f.maxima);
  mark(minima_, f.minima);
  mark(inflexions_, f.inflexions);
  place(tangents_, f.tangents);
  place(normals_, f.normals);
  place(curvature_, f.curvature);
}

void frmF5::OpenPad(QLineEdit* field) {
  QString caption = (field == txtFormula1_ ? lblFormula1_ : lblFormula2_)->text().trimmed();
  while (caption.endsWith('=') || caption.endsWith(':')) caption = caption.left(caption.size() - 1).trimmed();
  auto* pad = new frmFunCal(this, field, caption);
  pad->open();
}

void frmF5::accept() {
  if (Canvas* canvas = parentWidget() ? parentWidget()->findChild<Canvas*>() : nullptr) canvas->MakeCurrent();
  CurveForm form = Form();
  CurveConfirm result = CurveConfirm::Stay;
  // A fault inside is shown by RunGuarded; the dialog stays.
  if (!RunGuarded([&] { result = ConfirmCurveForm(form, editId_); })) return;
  if (result == CurveConfirm::Stay) {
    // The fields show what the filters made of them.
    ShowForm(form);
    return;
  }
  QDialog::accept();
}

void frmF5::done(int result) {
  if (EditMode && !editId_.empty() && EditObjectId == editId_) EditMode = false;
  QDialog::done(result);
}

}  // namespace vt::app
