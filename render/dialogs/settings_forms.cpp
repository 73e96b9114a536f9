#include "render/dialogs/settings_forms.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <initializer_list>

#include "app/canvas.h"
#include "document/command_table.h"

namespace vt::app {

namespace {

void CurrentCanvas(QWidget* window) {
  if (Canvas* c = window ? window->findChild<Canvas*>() : nullptr) c->MakeCurrent();
}

QDialogButtonBox* OkCancel(QDialog* d) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, d);
  QObject::connect(buttons, &QDialogButtonBox::accepted, d, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, d, &QDialog::reject);
  return buttons;
}

QLineEdit* Field(QWidget* parent, const QString& name, const std::string& text) {
  auto* f = new QLineEdit(QString::fromStdString(text), parent);
  f->setObjectName(name);
  f->setMaximumWidth(90);
  return f;
}

QComboBox* SchemeList(QWidget* parent, const QString& name, int scheme) {
  auto* box = new QComboBox(parent);
  box->setObjectName(name);
  for (const char* s : kSchemeNames) box->addItem(QString::fromUtf8(s));
  box->setCurrentIndex(scheme >= 1 && scheme <= static_cast<int>(kSchemeNames.size()) ? scheme - 1 : 0);
  return box;
}

QCheckBox* Check(QWidget* parent, const QString& name, const QString& text, bool on) {
  auto* c = new QCheckBox(text, parent);
  c->setObjectName(name);
  c->setChecked(on);
  return c;
}

std::string Text(const QLineEdit* f) { return f->text().toStdString(); }

// A widget that means nothing in the present scene: greyed, and its tooltip
// says why.
void Unused(QWidget* w, const QString& why) {
  w->setEnabled(false);
  w->setToolTip(why);
}

bool PlaneScene() { return SceneMode != 3; }

QColor ToQColor(std::uint32_t c) { return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF); }
std::uint32_t FromQColor(const QColor& c) {
  return static_cast<std::uint32_t>(c.red()) | (static_cast<std::uint32_t>(c.green()) << 8) |
         (static_cast<std::uint32_t>(c.blue()) << 16);
}

// A button that shows a colour and picks another.
QPushButton* ColourButton(QWidget* parent, const QString& name, const QString& text, std::uint32_t& colour) {
  auto* b = new QPushButton(text, parent);
  b->setObjectName(name);
  auto paint = [b, &colour] { b->setStyleSheet(QString("background-color: %1").arg(ToQColor(colour).name())); };
  paint();
  QObject::connect(b, &QPushButton::clicked, b, [b, &colour, paint] {
    const QColor c = QColorDialog::getColor(ToQColor(colour), b->window(), b->text());
    if (!c.isValid()) return;
    colour = FromQColor(c);
    paint();
  });
  return b;
}

}  // namespace

// ---- frmF14 ------------------------------------------------------------------------------

frmF14::frmF14(QWidget* parent) : QDialog(parent) {
  setObjectName("frmF14");
  setWindowTitle(tr("View Setting"));
  setAttribute(Qt::WA_DeleteOnClose);
  const ViewSettingsForm f = CurrentViewSettings();
  auto* box = new QVBoxLayout(this);
  auto* proj = new QGroupBox(tr("Projection Type"), this);
  auto* projRows = new QVBoxLayout(proj);
  ortho_ = new QRadioButton(tr("Orthographic"), proj);
  ortho_->setObjectName("optOrtho");
  persp_ = new QRadioButton(tr("Perspective"), proj);
  persp_->setObjectName("optPersp");
  (f.ProjectType == 2 ? persp_ : ortho_)->setChecked(true);
  projRows->addWidget(ortho_);
  projRows->addWidget(persp_);
  if (PlaneScene()) proj->setToolTip(tr("The plane scene is flat: it looks the same in both projections."));
  box->addWidget(proj);
  auto* limits = new QGroupBox(tr("View Intervals"), this);
  auto* grid = new QGridLayout(limits);
  static const char* const kCaptions[6] = {"Min x", "Max x", "Min y", "Max y", "Min z", "Max z"};
  static const char* const kNames[6] = {"txtMinX", "txtMaxX", "txtMinY", "txtMaxY", "txtMinZ", "txtMaxZ"};
  for (int i = 0; i < 6; ++i) {
    limits_[static_cast<size_t>(i)] = Field(limits, kNames[i], f.Limits[static_cast<size_t>(i)]);
    grid->addWidget(new QLabel(tr(kCaptions[i]), limits), i / 2, (i % 2) * 2);
    grid->addWidget(limits_[static_cast<size_t>(i)], i / 2, (i % 2) * 2 + 1);
  }
  box->addWidget(limits);
  auto* axes = new QPushButton(tr("Axis Properties..."), this);
  axes->setObjectName("cmdAxis");
  connect(axes, &QPushButton::clicked, this, [this] { (new frmF20(parentWidget()))->open(); });
  box->addWidget(axes);
  box->addWidget(OkCancel(this));
}

void frmF14::accept() {
  ViewSettingsForm f;
  f.ProjectType = persp_->isChecked() ? 2 : 1;
  for (int i = 0; i < 6; ++i) f.Limits[static_cast<size_t>(i)] = Text(limits_[static_cast<size_t>(i)]);
  CurrentCanvas(parentWidget());
  if (!ApplyViewSettings(f)) return;  // the message is shown; the dialog stays
  QDialog::accept();
}

// ---- frmF3 ---------------------------------------------------------------------------------

frmF3::frmF3(QWidget* parent) : QDialog(parent) {
  setObjectName("frmF3");
  setWindowTitle(tr("Settings"));
  setAttribute(Qt::WA_DeleteOnClose);
  const Cls3& a = AxisObject;
  auto* box = new QVBoxLayout(this);
  auto* rows = new QFormLayout;
  show_ = Check(this, "chkShow", tr("Show"), ShowAxis);
  rows->addRow(show_);
  titleX_ = Field(this, "txtTitleX", a.TitleX);
  titleY_ = Field(this, "txtTitleY", a.TitleY);
  titleZ_ = Field(this, "txtTitleZ", a.TitleZ);
  rows->addRow(tr("X Axis Title"), titleX_);
  rows->addRow(tr("Y Axis Title"), titleY_);
  rows->addRow(tr("Z Axis Title"), titleZ_);
  panelXY_ = Check(this, "chkXYPanel", tr("XY Panel"), a.ShowXYPanel);
  xy_ = SchemeList(this, "cboXYScheme", a.XYPanelMaterial);
  rows->addRow(panelXY_, xy_);
  panelXZ_ = Check(this, "chkXZPanel", tr("XZ Panel"), a.ShowXZPanel);
  xz_ = SchemeList(this, "cboXZScheme", a.XZPanelMaterial);
  rows->addRow(panelXZ_, xz_);
  panelYZ_ = Check(this, "chkYZPanel", tr("YZ Panel"), a.ShowYZPanel);
  yz_ = SchemeList(this, "cboYZScheme", a.YZPanelMaterial);
  rows->addRow(panelYZ_, yz_);
  if (PlaneScene()) {
    for (QWidget* w : {static_cast<QWidget*>(panelXZ_), static_cast<QWidget*>(xz_), static_cast<QWidget*>(panelYZ_),
                       static_cast<QWidget*>(yz_), static_cast<QWidget*>(titleZ_)})
      Unused(w, tr("The plane scene shows no z axis: this setting acts in the space scene."));
  }
  box->addLayout(rows);
  box->addWidget(OkCancel(this));
}

void frmF3::accept() {
  AxisSettingsForm f = CurrentAxisSettings();
  f.Axis.Show = show_->isChecked();
  f.Axis.TitleX = Text(titleX_);
  f.Axis.TitleY = Text(titleY_);
  f.Axis.TitleZ = Text(titleZ_);
  f.Axis.ShowXYPanel = panelXY_->isChecked();
  f.Axis.ShowXZPanel = panelXZ_->isChecked();
  f.Axis.ShowYZPanel = panelYZ_->isChecked();
  f.Axis.XYPanelMaterial = xy_->currentIndex() + 1;
  f.Axis.XZPanelMaterial = xz_->currentIndex() + 1;
  f.Axis.YZPanelMaterial = yz_->currentIndex() + 1;
  CurrentCanvas(parentWidget());
  if (!ApplyAxisSettings(f)) return;
  QDialog::accept();
}

// ---- frmF20 --------------------------------------------------------------------------------

frmF20::frmF20(QWidget* parent) : QDialog(parent) {
  setObjectName("frmF20");
  setWindowTitle(tr("Axis Properties"));
  setAttribute(Qt::WA_DeleteOnClose);
  const AxisSettingsForm f = CurrentAxisSettings();
  const Cls3& a = f.Axis;
  auto* tabs = new QTabWidget(this);
  tabs->setObjectName("tabAxis");

  auto* general = new QWidget(tabs);
  auto* g = new QVBoxLayout(general);
  square_ = new QRadioButton(tr("Square"), general);
  square_->setObjectName("optSquare");
  equal_ = new QRadioButton(tr("Equal"), general);
  equal_->setObjectName("optEqual");
  custom_ = new QRadioButton(tr("Custom"), general);
  custom_->setObjectName("optCustom");
  (f.Scales == ScaleChoice::Square ? square_ : f.Scales == ScaleChoice::Equal ? equal_ : custom_)->setChecked(true);
  g->addWidget(square_);
  g->addWidget(equal_);
  g->addWidget(custom_);
  auto* scaleRow = new QHBoxLayout;
  static const char* const kScaleNames[3] = {"txtScaleX", "txtScaleY", "txtScaleZ"};
  static const char* const kScaleCaptions[3] = {"x", "y", "z"};
  for (int i = 0; i < 3; ++i) {
    scales_[static_cast<size_t>(i)] = Field(general, kScaleNames[i], f.Scale[static_cast<size_t>(i)]);
    scaleRow->addWidget(new QLabel(tr(kScaleCaptions[i]), general));
    scaleRow->addWidget(scales_[static_cast<size_t>(i)]);
  }
  g->addLayout(scaleRow);
  for (QWidget* w : std::initializer_list<QWidget*>{square_, equal_, custom_, scales_[0], scales_[1], scales_[2]}) {
    if (PlaneScene()) Unused(w, tr("The plane scene draws x and y 1 to 1: the scales act in the space scene."));
    else w->setToolTip(tr("How large each axis is drawn in the space scene: a z scale of 0.2 draws z a fifth "
                          "as tall. Square: 1 each; Equal: the x scale for all three."));
  }
  auto* settings = new QPushButton(tr("Panels and Titles..."), general);
  settings->setObjectName("cmdSettings");
  connect(settings, &QPushButton::clicked, this, [this] { (new frmF3(parentWidget()))->open(); });
  g->addWidget(settings);
  g->addStretch();
  tabs->addTab(general, tr("General"));

  auto* axis = new QWidget(tabs);
  auto* ax = new QFormLayout(axis);
  show_ = Check(axis, "chkShowAxis", tr("Show"), ShowAxis);
  ax->addRow(show_);
  width_ = Field(axis, "txtAxisWidth", SingleToText(a.AxisWidth));
  ax->addRow(tr("Width"), width_);
  labels_ = Check(axis, "chkSecondaryLabel", tr("Secondary labels"), a.ShowSecondaryLabel);
  ax->addRow(labels_);
  pi_ = Check(axis, "chkPI", tr("Show PI"), a.ShowPI);
  ax->addRow(pi_);
  numX_ = Field(axis, "txtLabelNumX", IntToText(a.LabelNumX));
  numY_ = Field(axis, "txtLabelNumY", IntToText(a.LabelNumY));
  numZ_ = Field(axis, "txtLabelNumZ", IntToText(a.LabelNumZ));
  ax->addRow(tr("Labels x"), numX_);
  ax->addRow(tr("Labels y"), numY_);
  ax->addRow(tr("Labels z"), numZ_);
  if (PlaneScene()) {
    for (QLineEdit* w : {numX_, numY_, numZ_})
      Unused(w, tr("Numbers of labels each side of an axis in the space scene; the plane axes follow the zoom."));
  }
  tabs->addTab(axis, tr("Axis"));

  auto* gridTab = new QWidget(tabs);
  auto* gr = new QVBoxLayout(gridTab);
  primary_ = Check(gridTab, "chkPrimaryGrid", tr("Primary grid"), a.ShowprimaryGrid);
  secondary_ = Check(gridTab, "chkSecondaryGrid", tr("Secondary grid"), a.ShowSecondaryGrid);
  gr->addWidget(primary_);
  gr->addWidget(secondary_);
  gr->addStretch();
  tabs->addTab(gridTab, tr("Grid"));

  auto* back = new QWidget(tabs);
  auto* bk = new QVBoxLayout(back);
  background_ = Check(back, "chkBackground", tr("Show background"), a.ShowBackground);
  shadow_ = Check(back, "chkShadow", tr("Shadow"), a.ShowShadow);
  backColour_ = a.BackColor;
  backColour2_ = a.BackColor2;
  bk->addWidget(background_);
  bk->addWidget(ColourButton(back, "cmdBackColor", tr("Top colour..."), backColour_));
  bk->addWidget(ColourButton(back, "cmdBackColor2", tr("Bottom colour..."), backColour2_));
  bk->addWidget(shadow_);
  if (PlaneScene()) Unused(shadow_, tr("The shadow falls on the floor of the space scene."));
  else shadow_->setToolTip(tr("The objects' shadow on the floor, the plane below the lowest of them"));
  bk->addStretch();
  tabs->addTab(back, tr("Background"));

  auto* fonts = new QWidget(tabs);
  auto* fn = new QVBoxLayout(fonts);
  betterFonts_ = Check(fonts, "chkBetterFonts", tr("Better fonts"), a.BetterFonts);
  betterFonts_->setToolTip(tr("Axis numbers and titles as filled outlines that grow with the scene"));
  fn->addWidget(betterFonts_);
  fn->addStretch();
  tabs->addTab(fonts, tr("Fonts"));

  auto* box = new QVBoxLayout(this);
  box->addWidget(tabs);
  box->addWidget(OkCancel(this));
}

void frmF20::accept() {
  AxisSettingsForm f = CurrentAxisSettings();
  Cls3& a = f.Axis;
  float width = 0;
  long nx = 0, ny = 0, nz = 0;
  if (!ReadNumberField(Text(width_), width) || !TextToLong(Text(numX_), nx) || !TextToLong(Text(numY_), ny) ||
      !TextToLong(Text(numZ_), nz)) {
    ReportIllegalData();
    return;
  }
  a.Show = show_->isChecked();
  a.AxisWidth = width;
  a.ShowSecondaryLabel = labels_->isChecked();
  a.ShowPI = pi_->isChecked();
  a.LabelNumX = static_cast<int>(nx);
  a.LabelNumY = static_cast<int>(ny);
  a.LabelNumZ = static_cast<int>(nz);
  a.ShowprimaryGrid = primary_->isChecked();
  a.ShowSecondaryGrid = secondary_->isChecked();
  a.ShowBackground = background_->isChecked();
  a.BackColor = backColour_;
  a.BackColor2 = backColour2_;
  a.ShowShadow = shadow_->isChecked();
  a.BetterFonts = betterFonts_->isChecked();
  f.Scales = square_->isChecked() ? ScaleChoice::Square : equal_->isChecked() ? ScaleChoice::Equal : ScaleChoice::Custom;
  for (int i = 0; i < 3; ++i) f.Scale[static_cast<size_t>(i)] = Text(scales_[static_cast<size_t>(i)]);
  CurrentCanvas(parentWidget());
  if (!ApplyAxisSettings(f)) return;
  QDialog::accept();
}

// ---- frmF8 ---------------------------------------------------------------------------------

frmF8::frmF8(QWidget* parent) : QDialog(parent) {
  setObjectName("frmF8");
  setWindowTitle(tr("Light Properties"));
  setAttribute(Qt::WA_DeleteOnClose);
  const LightSettingsForm f = CurrentLightSettings();
  auto* box = new QVBoxLayout(this);
  lighting_ = Check(this, "chkLighting", tr("Lighting"), f.LightingOn);
  box->addWidget(lighting_);
  auto row = [](QWidget* parent, QGridLayout* grid, int r, const QString& caption, const QString& key,
                const std::array<std::string, 4>& values, std::array<QLineEdit*, 4>& out) {
    grid->addWidget(new QLabel(caption, parent), r, 0);
    for (int c = 0; c < 4; ++c) {
      out[static_cast<size_t>(c)] = Field(parent, key + QString::number(c), values[static_cast<size_t>(c)]);
      grid->addWidget(out[static_cast<size_t>(c)], r, c + 1);
    }
  };
  for (int l = 0; l < 2; ++l) {
    const size_t L = static_cast<size_t>(l);
    auto* frame = new QGroupBox(tr("Light %1").arg(l), this);
    auto* grid = new QGridLayout(frame);
    lights_[L].enabled = Check(frame, QString("chkLight%1").arg(l), tr("Enabled"), f.Enabled[L]);
    grid->addWidget(lights_[L].enabled, 0, 0);
    const QString k = QString("txtL%1").arg(l);
    row(frame, grid, 1, tr("Ambient light color"), k + "Ambient", f.Ambient[L], lights_[L].ambient);
    row(frame, grid, 2, tr("Diffuse light color"), k + "Diffuse", f.Diffuse[L], lights_[L].diffuse);
    row(frame, grid, 3, tr("Specular light color"), k + "Specular", f.Specular[L], lights_[L].specular);
    row(frame, grid, 4, tr("Position"), k + "Position", f.Position[L], lights_[L].position);
    box->addWidget(frame);
  }
  auto* model = new QGroupBox(tr("Light model"), this);
  auto* grid = new QGridLayout(model);
  global_ = Check(model, "chkGlobalAmbient", tr("Global ambient light"), f.UseGlobalAmbient);
  grid->addWidget(global_, 0, 0);
  row(model, grid, 1, tr("Global ambient light color"), "txtGlobal", f.GlobalAmbient, globalAmbient_);
  twoSides_ = Check(model, "chkTwoSides", tr("Two sides"), f.TwoSides);
  grid->addWidget(twoSides_, 2, 0);
  box->addWidget(model);
  box->addWidget(OkCancel(this));
}

void frmF8::accept() {
  LightSettingsForm f;
  f.LightingOn = lighting_->isChecked();
  for (size_t l = 0; l < 2; ++l) {
    f.Enabled[l] = lights_[l].enabled->isChecked();
    for (size_t c = 0; c < 4; ++c) {
      f.Ambient[l][c] = Text(lights_[l].ambient[c]);
      f.Diffuse[l][c] = Text(lights_[l].diffuse[c]);
      f.Specular[l][c] = Text(lights_[l].specular[c]);
      f.Position[l][c] = Text(lights_[l].position[c]);
    }
  }
  f.UseGlobalAmbient = global_->isChecked();
  for (size_t c = 0; c < 4; ++c) f.GlobalAmbient[c] = Text(globalAmbient_[c]);
  f.TwoSides = twoSides_->isChecked();
  CurrentCanvas(parentWidget());
  if (!ApplyLightSettings(f)) return;
  QDialog::accept();
}

// ---- installation ---------------------------------------------------------------------------

void InstallSettingsForms(QWidget* mainWindow) {
  QPointer<QWidget> window(mainWindow);
  RegisterHandler("mnuViewSet", [window] {
    if (window) (new frmF14(window))->open();
  });
  RegisterHandler("mnuDrawLight", [window] {
    if (window) (new frmF8(window))->open();
  });
}

}  // namespace vt::app
