// The transformation dialogs frmTMove, frmTRotate, frmTZoom and frmTMirror.
// They stay above the main window and are not modal: "Select" takes what has
// been selected on the canvas meanwhile into the list.
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/canvas.h"
#include "document/document.h"
#include "document/globals.h"
#include "document/host.h"
#include "document/numtext.h"
#include "expr/text_prep.h"
#include "tools/dialogs/construction_forms.h"

namespace vt::app {

namespace {

const char* const kSelectObjectFirst = "Please select at lease 1 object first.";
const char* const kSelectPointFromCanvas = "Please select a point first from the canvas.";
const char* const kSelectAxisOrCentre = "Please select a rotating axis or center point first.";
const char* const kSelectObjectsFirst = "Please select objects first.";

void Say(const char* text) { host().MsgBox(text, "Note", MsgButtons::OK, MsgIcon::Exclamation); }

std::string Head(const std::string& id) { return id.substr(0, 2); }

// The first selected object that may serve, by kind.
std::string FirstSelectedPoint() {
  for (Position* p : Sel.Points)
    if (FindPoint(p->ID)) return p->ID;
  return {};
}
std::string FirstSelectedPointOrLine() {
  std::string id = FirstSelectedPoint();
  if (!id.empty()) return id;
  for (CLine* l : Sel.Lines)
    if (Doc.Lines.FindById(l->ID)) return l->ID;
  return {};
}
std::string FirstSelectedMirror() {
  std::string id = FirstSelectedPointOrLine();
  if (!id.empty()) return id;
  for (CRegion* g : Sel.Regions)
    if (Doc.Regions.FindById(g->ID)) return g->ID;
  return {};
}

// Whether an id names an object of the document of one of the heads.
bool Exists(const std::string& id, std::initializer_list<const char*> heads) {
  const std::string h = Head(id);
  for (const char* head : heads) {
    if (h != head) continue;
    if (h == "PT") return FindPoint(id) != nullptr;
    if (h == "LN") return Doc.Lines.FindById(id) != nullptr;
    if (h == "RG") return Doc.Regions.FindById(id) != nullptr;
  }
  return false;
}

std::string Trimmed(const QLineEdit* field) { return field->text().trimmed().toStdString(); }

}  // namespace

// ---- the common part -------------------------------------------------------------------------

TransformDialog::TransformDialog(QWidget* parent, const QString& name, const QString& title) : QDialog(parent) {
  setObjectName(name);
  setWindowTitle(title);
  setAttribute(Qt::WA_DeleteOnClose);
  // Above the main window, and the canvas stays usable.
  setWindowFlag(Qt::Tool);
  setModal(false);

  auto* box = new QVBoxLayout(this);
  auto* objects = new QGroupBox(tr("Objects"), this);
  auto* objectRows = new QVBoxLayout(objects);
  List1_ = new QListWidget(objects);
  List1_->setObjectName("List1");
  List1_->setMinimumHeight(90);
  objectRows->addWidget(List1_);
  auto* select = new QPushButton(tr("Select"), objects);
  select->setObjectName("Command5");
  select->setAutoDefault(false);
  objectRows->addWidget(select);
  box->addWidget(objects);

  fields_ = new QFormLayout;
  box->addLayout(fields_);

  auto* how = new QGroupBox(this);
  auto* howRows = new QVBoxLayout(how);
  Option1_ = new QRadioButton(tr("Transform Itself"), how);
  Option1_->setObjectName("Option1");
  Option2_ = new QRadioButton(tr("Generate a new object"), how);
  Option2_->setObjectName("Option2");
  Option2_->setChecked(true);
  howRows->addWidget(Option1_);
  howRows->addWidget(Option2_);
  box->addWidget(how);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName("cmdOK");
  buttons->button(QDialogButtonBox::Cancel)->setObjectName("cmdCancel");
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  box->addWidget(buttons);

  // The selection when the dialog opens, then whatever "Select" finds.
  auto fill = [this] {
    std::vector<std::string> list = ids();
    AddSelectionToList(list);
    for (size_t i = static_cast<size_t>(List1_->count()); i < list.size(); ++i)
      List1_->addItem(QString::fromStdString(list[i]));
  };
  fill();
  connect(select, &QPushButton::clicked, this, fill);
}

std::vector<std::string> TransformDialog::ids() const {
  std::vector<std::string> out;
  for (int i = 0; i < List1_->count(); ++i) out.push_back(List1_->item(i)->text().toStdString());
  return out;
}

QLineEdit* TransformDialog::AddIdField(const QString& name, const QString& caption, const QString& buttonName,
                                       std::string (*take)(), const char* message) {
  auto* row = new QHBoxLayout;
  // Empty at first: what is selected when the dialog opens goes to the list.
  auto* field = new QLineEdit(this);
  field->setObjectName(name);
  // A field that takes a point says so on its button.
  auto* pick = new QPushButton(take == FirstSelectedPoint ? tr("Select a point from the canvas") : tr("Select"), this);
  pick->setObjectName(buttonName);
  pick->setAutoDefault(false);
  row->addWidget(field, 1);
  row->addWidget(pick);
  fields_->addRow(caption, row);
  idRows_[field] = row;
  connect(pick, &QPushButton::clicked, this, [field, take, message] {
    const std::string id = take();
    if (id.empty()) {
      Say(message);
      return;
    }
    field->setText(QString::fromStdString(id));
  });
  return field;
}

QLineEdit* TransformDialog::AddNumber(const QString& name, const QString& caption, const QString& text) {
  auto* field = new QLineEdit(text, this);
  field->setObjectName(name);
  fields_->addRow(caption, field);
  return field;
}

void TransformDialog::ShowRow(QLineEdit* field, bool shown) {
  auto it = idRows_.find(field);
  if (it != idRows_.end()) fields_->setRowVisible(it->second, shown);
  else fields_->setRowVisible(field, shown);
}

float TransformDialog::NumberOf(const QLineEdit* field) {
  float v = 0;
  if (!ReadNumberText(field->text().trimmed().toStdString(), v)) return 0;
  return v;
}

void TransformDialog::accept() {
  const std::vector<std::string> list = ids();
  if (list.empty()) {
    Say(kSelectObjectFirst);
    return;
  }
  TransformParams params;
  if (!Collect(params)) return;
  if (auto* canvas = parentWidget() ? parentWidget()->findChild<Canvas*>() : nullptr) canvas->MakeCurrent();
  if (!ApplyTransform(list, params, Option2_->isChecked())) return;  // said why; the dialog stays
  QDialog::accept();
}

// ---- frmTMove -----------------------------------------------------------------------------------

frmTMove::frmTMove(QWidget* parent) : TransformDialog(parent, "frmTMove", tr("Translation Transformation")) {
  auto* type = new QGroupBox(tr("Type"), this);
  auto* typeRow = new QHBoxLayout(type);
  Option3_ = new QRadioButton(tr("Cartesian"), type);
  Option3_->setObjectName("Option3");
  Option4_ = new QRadioButton(tr("Polar"), type);
  Option4_->setObjectName("Option4");
  Option5_ = new QRadioButton(tr("Vector"), type);
  Option5_->setObjectName("Option5");
  Option3_->setChecked(true);
  typeRow->addWidget(Option3_);
  typeRow->addWidget(Option4_);
  typeRow->addWidget(Option5_);
  fields()->addRow(type);

  txtDx_ = AddNumber("txtDx", tr("dx"), "0");
  txtDy_ = AddNumber("txtDy", tr("dy"), "0");
  txtDz_ = AddNumber("txtDz", tr("dz"), "0");
  txtAngle_ = AddNumber("txtAngle", tr("Angle"), "90");
  txtDistance_ = AddNumber("txtDistance", tr("Distance"), "0");
  txtStart_ = AddIdField("txtStart", tr("Start Point"), "cmdStart", FirstSelectedPoint, kSelectPointFromCanvas);
  txtEnd_ = AddIdField("txtEnd", tr("End Point"), "cmdEnd", FirstSelectedPoint, kSelectPointFromCanvas);

  auto show = [this] {
    const bool cartesian = Option3_->isChecked(), polar = Option4_->isChecked(), vector = Option5_->isChecked();
    for (QLineEdit* f : {txtDx_, txtDy_}) ShowRow(f, cartesian);
    // dz only in a space document.
    ShowRow(txtDz_, cartesian && SceneMode == 3);
    for (QLineEdit* f : {txtAngle_, txtDistance_}) ShowRow(f, polar);
    for (QLineEdit* f : {txtStart_, txtEnd_}) ShowRow(f, vector);
    adjustSize();
  };
  for (QRadioButton* o : {Option3_, Option4_, Option5_}) connect(o, &QRadioButton::toggled, this, show);
  show();
}

bool frmTMove::Collect(TransformParams& p) {
  p.op = TransformOp::Move;
  if (Option3_->isChecked()) {
    // Cartesian: the three offsets.
    p.moveType = 2;
    p.a = NumberOf(txtDx_);
    p.b = NumberOf(txtDy_);
    p.c = SceneMode == 3 ? NumberOf(txtDz_) : 0.0f;
  } else if (Option4_->isChecked()) {
    // Polar: the angle in degrees, the distance.
    p.moveType = 1;
    p.a = static_cast<float>(NumberOf(txtAngle_) / 180.0 * 3.1416);
    p.b = NumberOf(txtDistance_);
  } else {
    // Vector: from the start point to the end point, followed when they move.
    p.moveType = 3;
    p.id3 = Trimmed(txtStart_);
    p.id4 = Trimmed(txtEnd_);
    for (QLineEdit* f : {txtStart_, txtEnd_}) {
      if (!Exists(Trimmed(f), {"PT"})) {
        Say(kSelectPointFromCanvas);
        f->setFocus();
        return false;
      }
    }
  }
  return true;
}

// ---- frmTRotate ---------------------------------------------------------------------------------

frmTRotate::frmTRotate(QWidget* parent) : TransformDialog(parent, "frmTRotate", tr("Rotating Transformation")) {
  Text1_ = AddNumber("Text1", tr("Angle"), "90");
  Text2_ = AddIdField("Text2", tr("Center/Axis"), "cmdCenter", FirstSelectedPointOrLine, kSelectAxisOrCentre);
}

bool frmTRotate::Collect(TransformParams& p) {
  p.op = TransformOp::Rotate;
  p.a = static_cast<float>(NumberOf(Text1_) / 180.0 * 3.1416);
  p.centre = Trimmed(Text2_);
  if (!Exists(p.centre, {"PT", "LN"})) {
    Say(kSelectAxisOrCentre);
    Text2_->setFocus();
    return false;
  }
  return true;
}

// ---- frmTZoom -----------------------------------------------------------------------------------

frmTZoom::frmTZoom(QWidget* parent) : TransformDialog(parent, "frmTZoom", tr("Scaling Transformation")) {
  Text1_ = AddNumber("Text1", tr("Scale"), "1");
  auto* hint = new QHBoxLayout;
  for (const char* part : {"(Zoom In", "0~1", "Zoom Out", ">1)"}) hint->addWidget(new QLabel(tr(part), this));
  hint->addStretch();
  fields()->addRow(QString(), hint);
  Text2_ = AddIdField("Text2", tr("Center"), "cmdCenter", FirstSelectedPoint, kSelectPointFromCanvas);
}

bool frmTZoom::Collect(TransformParams& p) {
  p.op = TransformOp::Zoom;
  p.a = NumberOf(Text1_);
  const std::string centre = Trimmed(Text2_);
  if (!centre.empty() && !Exists(centre, {"PT"})) {
    Say(kSelectPointFromCanvas);
    Text2_->setFocus();
    return false;
  }
  p.centre = centre;
  return true;
}

// ---- frmTMirror ---------------------------------------------------------------------------------

frmTMirror::frmTMirror(QWidget* parent) : TransformDialog(parent, "frmTMirror", tr("Symmetrical Transformation")) {
  Text2_ = AddIdField("Text2", tr("Center or Axis"), "cmdCenter", FirstSelectedMirror, kSelectObjectsFirst);
}

bool frmTMirror::Collect(TransformParams& p) {
  p.op = TransformOp::Mirror;
  p.centre = Trimmed(Text2_);
  if (!Exists(p.centre, {"PT", "LN", "RG"})) {
    Say(kSelectObjectsFirst);
    Text2_->setFocus();
    return false;
  }
  return true;
}

}  // namespace vt::app
