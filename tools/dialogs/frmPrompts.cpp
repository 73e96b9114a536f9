// The prompts of the constructions that need numbers: frmDFD, frmLineExtP,
// frmFlexP2D, frm3DCircle and frmCircle for a circle of a given radius.
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/canvas.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/numtext.h"
#include "geometry/dialogs/property_forms.h"
#include "geometry/properties.h"
#include "tools/construction_prompts.h"
#include "tools/dialogs/construction_forms.h"

namespace vt::app {

namespace {

std::string TextOf(const QLineEdit* field) { return field->text().toStdString(); }

// Two choices in a frame.
QGroupBox* Pair(QWidget* parent, QRadioButton*& first, const char* firstName, const QString& firstText,
                QRadioButton*& second, const char* secondName, const QString& secondText) {
  auto* frame = new QGroupBox(parent);
  auto* rows = new QVBoxLayout(frame);
  first = new QRadioButton(firstText, frame);
  first->setObjectName(firstName);
  second = new QRadioButton(secondText, frame);
  second->setObjectName(secondName);
  first->setChecked(true);
  rows->addWidget(first);
  rows->addWidget(second);
  return frame;
}

}  // namespace

// ---- the common part -------------------------------------------------------------------------

PromptDialog::PromptDialog(QWidget* parent, const QString& name, const QString& title) : QDialog(parent) {
  setObjectName(name);
  setWindowTitle(title);
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowModality(Qt::WindowModal);
  auto* outer = new QVBoxLayout(this);
  outer->setSizeConstraint(QLayout::SetFixedSize);
  form_ = new QFormLayout;
  form_->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
  outer->addLayout(form_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName("cmdOK");
  buttons->button(QDialogButtonBox::Cancel)->setObjectName("cmdCancel");
  buttons->button(QDialogButtonBox::Ok)->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  outer->addWidget(buttons);
}

QLineEdit* PromptDialog::AddText(const QString& name, const QString& caption, const QString& text) {
  auto* field = new QLineEdit(text, this);
  field->setObjectName(name);
  field->setMinimumWidth(140);
  form_->addRow(caption, field);
  return field;
}

void PromptDialog::accept() {
  if (auto* canvas = parentWidget() ? parentWidget()->findChild<Canvas*>() : nullptr) canvas->MakeCurrent();
  bool built = false;
  // A fault inside has been shown; the dialog stays, to be cancelled.
  RunGuarded([&] { built = Confirm(); });
  if (built) QDialog::accept();
}

// ---- frmDFD -----------------------------------------------------------------------------------

frmDFD::frmDFD(QWidget* parent) : PromptDialog(parent, "frmDFD", tr("Equidistant Points")) {
  cboParts_ = new QComboBox(this);
  cboParts_->setObjectName("cboParts");
  for (const std::string& n : DivisionChoices()) cboParts_->addItem(QString::fromStdString(n));
  cboParts_->setCurrentIndex(0);
  form()->addRow(tr("Number of Parts"), cboParts_);
}

bool frmDFD::Confirm() {
  bool ok = false;
  const int parts = cboParts_->currentText().toInt(&ok);
  return EquidistantPointsOK(ok ? parts : 0);
}

// ---- frmLineExtP ------------------------------------------------------------------------------

frmLineExtP::frmLineExtP(QWidget* parent) : PromptDialog(parent, "frmLineExtP", tr("Epitaxial/Interpolated Point")) {
  form()->addRow(Pair(this, optEpitaxial_, "optEpitaxial", tr("Epitaxial Point"), optInterpolated_,
                      "optInterpolated", tr("Interpolated Point")));
  form()->addRow(Pair(this, optAbsolute_, "optAbsolute", tr("Absolute Distance"), optRelative_, "optRelative",
                      tr("Relative Distance (times the length)")));
  txtDistance_ = AddText("txtDistance", tr("Distance"), "1");
}

bool frmLineExtP::Confirm() {
  float d = 0;
  if (!ReadDialogNumber(TextOf(txtDistance_), d)) {
    txtDistance_->setFocus();
    txtDistance_->selectAll();
    return false;
  }
  return LineExtPointOK(optEpitaxial_->isChecked() ? 1 : 2, optAbsolute_->isChecked(), d);
}

// ---- frmFlexP2D -------------------------------------------------------------------------------

frmFlexP2D::frmFlexP2D(QWidget* parent) : PromptDialog(parent, "frmFlexP2D", tr("2D Directed Extension Point")) {
  txtAngle_ = AddText("txtAngle", tr("Angle (degrees)"), "0");
  txtDistance_ = AddText("txtDistance", tr("Distance"), "1");
}

bool frmFlexP2D::Confirm() {
  float angle = 0, d = 0;
  for (auto [field, value] : {std::pair{txtAngle_, &angle}, std::pair{txtDistance_, &d}}) {
    if (!ReadDialogNumber(TextOf(field), *value)) {
      field->setFocus();
      field->selectAll();
      return false;
    }
  }
  return DirectedExtensionOK(angle, d);
}

// ---- frm3DCircle ------------------------------------------------------------------------------

frm3DCircle::frm3DCircle(QWidget* parent) : PromptDialog(parent, "frm3DCircle", tr("Normal Direction Spatial Circle")) {
  txtRadius_ = AddText("txtRadius", tr("Radius"), "1");
}

bool frm3DCircle::Confirm() {
  float r = 0;
  if (!ReadDialogNumber(TextOf(txtRadius_), r)) {
    txtRadius_->setFocus();
    txtRadius_->selectAll();
    return false;
  }
  return Circle3DOK(r);
}

// ---- frmCircle, circle of a given radius ----------------------------------------------------

frmCircleRadius::frmCircleRadius(QWidget* parent)
    : PromptDialog(parent, "frmCircle", tr("Circle With Center And Radius")) {
  QString centre;
  if (Sel.Points.count() > 0) {
    const Position* p = FindPoint(Sel.Points.Item(1)->ID);
    if (p) centre = QString::fromStdString(p->PLabel.empty() ? p->ID : p->PLabel);
  }
  auto* info = new QLabel(centre, this);
  info->setObjectName("lblCenter");
  form()->addRow(tr("Center:"), info);
  txtRadius_ = AddText("txtRadius", tr("&Radius:"), "1");
  cboStyle_ = new QComboBox(this);
  cboStyle_->setObjectName("cboStyle");
  for (const std::string& n : LineStyleNames()) cboStyle_->addItem(QString::fromStdString(n));
  cboStyle_->setCurrentIndex(0);
  form()->addRow(tr("&Style:"), cboStyle_);
  txtWidth_ = AddText("txtWidth", tr("&Width:"), "2");
  cmdColor_ = new ColorButton(this);
  cmdColor_->setObjectName("cmdColor");
  cmdColor_->setAutoDefault(false);
  form()->addRow(tr("&Colour:"), cmdColor_);
  chkFilled_ = new QCheckBox(tr("&Filled"), this);
  chkFilled_->setObjectName("chkFilled");
  form()->addRow(QString(), chkFilled_);
}

bool frmCircleRadius::Confirm() {
  CircleRadiusForm f;
  for (auto [field, value] : {std::pair{txtRadius_, &f.radius}, std::pair{txtWidth_, &f.width}}) {
    if (!ReadDialogNumber(TextOf(field), *value)) {
      field->setFocus();
      field->selectAll();
      return false;
    }
  }
  f.style = cboStyle_->currentIndex() + 1;
  f.color = cmdColor_->color();
  f.filled = chkFilled_->isChecked();
  return CircleRadiusOK(f);
}

}  // namespace vt::app
