#include "graphs/dialogs/look_tabs.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <utility>

#include "graphs/surface_form.h"

namespace vt::app {

QLineEdit* FormField(QWidget* parent, const QString& name, int width) {
  auto* e = new QLineEdit(parent);
  e->setObjectName(name);
  e->setMinimumWidth(width);
  return e;
}

QComboBox* FormChoice(QWidget* parent, const QString& name, const QStringList& items) {
  auto* c = new QComboBox(parent);
  c->setObjectName(name);
  c->addItems(items);
  return c;
}

ColorButton* FormColor(QWidget* parent, const QString& name) {
  auto* b = new ColorButton(parent);
  b->setObjectName(name);
  b->setAutoDefault(false);
  return b;
}

void SurfaceLookTabs::AddTo(QTabWidget* tabs) {
  tabs->addTab(ColorPage(tabs), QObject::tr("Color"));
  tabs->addTab(MaterialPage(tabs), QObject::tr("Material"));
  tabs->addTab(TransparencyPage(tabs), QObject::tr("Transparency"));
  tabs->addTab(TexturePage(tabs), QObject::tr("Texture"));
}

QWidget* SurfaceLookTabs::ColorPage(QWidget* parent) {
  auto* page = new QWidget(parent);
  auto* grid = new QGridLayout(page);
  cboFillStyle_ = FormChoice(page, "cboFillStyle",
                             {QObject::tr("Two colors along y"), QObject::tr("Two colors along z"),
                              QObject::tr("Two colors along x"), QObject::tr("One color"), QObject::tr("Color ramp")});
  cmdFirstColor_ = FormColor(page, "cmdFirstColor");
  cmdSecondColor_ = FormColor(page, "cmdSecondColor");
  QStringList ramps;
  for (const char* n : kRampNames) ramps << QString(n);
  cboRamp_ = FormChoice(page, "cboRamp", ramps);
  cboShow_ = FormChoice(page, "cboShow", {QObject::tr("Points"), QObject::tr("Wire"), QObject::tr("Filled")});
  cboSmoothness_ =
      FormChoice(page, "cboSmoothness", {QObject::tr("Flat"), QObject::tr("Flat (fine)"), QObject::tr("Smooth")});
  const std::pair<const char*, QWidget*> rows[] = {{"Coloring", cboFillStyle_}, {"First color", cmdFirstColor_},
                                                   {"Second color", cmdSecondColor_}, {"Ramp", cboRamp_},
                                                   {"Show", cboShow_}, {"Smoothness", cboSmoothness_}};
  int r = 0;
  for (const auto& [caption, widget] : rows) {
    grid->addWidget(new QLabel(QObject::tr(caption), page), r, 0);
    grid->addWidget(widget, r++, 1);
  }
  return page;
}

QWidget* SurfaceLookTabs::MaterialPage(QWidget* parent) {
  auto* page = new QWidget(parent);
  auto* box = new QVBoxLayout(page);
  QStringList names;
  names << QObject::tr("None");
  for (const char* n : kMaterialSchemeNames) names << QString(n);
  cboMaterial_ = FormChoice(page, "cboMaterial", names);
  box->addWidget(cboMaterial_);
  box->addStretch(1);
  return page;
}

QWidget* SurfaceLookTabs::TransparencyPage(QWidget* parent) {
  auto* page = new QWidget(parent);
  auto* grid = new QGridLayout(page);
  chkTrans_ = new QCheckBox(QObject::tr("Transparent"), page);
  chkTrans_->setObjectName("chkTrans");
  txtAlpha_ = FormField(page, "txtAlpha");
  grid->addWidget(chkTrans_, 0, 0, 1, 2);
  grid->addWidget(new QLabel(QObject::tr("Alpha"), page), 1, 0);
  grid->addWidget(txtAlpha_, 1, 1);
  return page;
}

QWidget* SurfaceLookTabs::TexturePage(QWidget* parent) {
  auto* page = new QWidget(parent);
  auto* grid = new QGridLayout(page);
  chkTexture_ = new QCheckBox(QObject::tr("Texture"), page);
  chkTexture_->setObjectName("chkTexture");
  txtTexName_ = FormField(page, "txtTexName", 220);
  auto* browse = new QPushButton(QObject::tr("..."), page);
  browse->setObjectName("cmdTexFile");
  browse->setAutoDefault(false);
  optTexAlone_ = new QRadioButton(QObject::tr("Texture only"), page);
  optTexAlone_->setObjectName("optTexAlone");
  optTexColor_ = new QRadioButton(QObject::tr("Texture with color"), page);
  optTexColor_->setObjectName("optTexColor");
  grid->addWidget(chkTexture_, 0, 0, 1, 2);
  grid->addWidget(txtTexName_, 1, 0);
  grid->addWidget(browse, 1, 1);
  grid->addWidget(optTexAlone_, 2, 0);
  grid->addWidget(optTexColor_, 3, 0);
  // A picture chosen is a picture wanted: the texture goes on with it.
  QObject::connect(browse, &QPushButton::clicked, page, [this] {
    const std::string path = PickTextureFile();
    if (!path.empty()) {
      txtTexName_->setText(Q(path));
      chkTexture_->setChecked(true);
    }
  });
  return page;
}

}  // namespace vt::app
