// The property dialogs of sectors, ribbons and spheres (frmMeshSurface), of
// intersection lines and loci (frmTrace) and of measurement notes (frmNote).
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

#include "geometry/dialogs/property_forms.h"
#include "graphs/color_ramp.h"

namespace vt::app {

namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

}  // namespace

frmMeshSurface::frmMeshSurface(QWidget* parent, PropertyForm form, const std::string& id,
                               const MeshSurfaceProps& props)
    : PropertyFormDialog(parent,
                         form == PropertyForm::Sector   ? "frmSector"
                         : form == PropertyForm::Ribbon ? "frmRibbon"
                                                        : "frmSphereProps",
                         form == PropertyForm::Sector   ? tr("Sector Properties")
                         : form == PropertyForm::Ribbon ? tr("Ribbon Properties")
                                                        : tr("Sphere Properties"),
                         id),
      props_(props) {
  AddInfo(form == PropertyForm::Sector ? tr("Sector:") : form == PropertyForm::Ribbon ? tr("Ribbon:") : tr("Sphere:"),
          Q(id));
  visible_ = AddCheck("chkVisible", tr("&Visible"), props.visible);
  // The order of the surfaces' list: FillStyle 1 to 5.
  fill_ = AddChoice("cboFillStyle", tr("Colo&ring:"),
                    {"Two colors along y", "Two colors along z", "Two colors along x", "One color", "Color ramp"},
                    props.fillStyle);
  color_ = AddColor("cmdColor", tr("&Colour:"), props.color);
  color2_ = AddColor("cmdColor2", tr("Second co&lour:"), props.color2);
  std::vector<std::string> ramps(kRampNames, kRampNames + kRampCount);
  if (!props.customRamp.empty()) ramps.push_back(props.customRamp);
  ramp_ = AddChoice("cboRamp", tr("R&amp:"), ramps, props.ramp + 1);
  alpha_ = AddText("txtOpacity", tr("&Opacity (0 to 1):"), props.alpha);
  if (props.sphere) {
    AddInfo(tr("Radius:"), Q(props.radius));
    aFrom_ = AddText("txtAFrom", tr("Around from (radians):"), props.aFrom);
    aTo_ = AddText("txtATo", tr("Around to:"), props.aTo);
    bFrom_ = AddText("txtBFrom", tr("Down from (radians):"), props.bFrom);
    bTo_ = AddText("txtBTo", tr("Down to:"), props.bTo);
  }
  auto rampNeeded = [this] {
    const int fill = ChoiceValue(fill_);
    ramp_->setEnabled(fill == 5);
    color2_->setEnabled(fill >= 1 && fill <= 3);
  };
  connect(fill_, &QComboBox::currentIndexChanged, this, rampNeeded);
  rampNeeded();
}

std::string frmMeshSurface::Apply() {
  MeshSurfaceProps p = props_;
  p.visible = visible_->isChecked();
  p.fillStyle = ChoiceValue(fill_);
  p.color = color_->color();
  p.color2 = color2_->color();
  p.ramp = ChoiceValue(ramp_) - 1;
  p.alpha = Text(alpha_);
  if (p.sphere) {
    p.aFrom = Text(aFrom_);
    p.aTo = Text(aTo_);
    p.bFrom = Text(bFrom_);
    p.bTo = Text(bTo_);
  }
  return ApplyMeshSurfaceProps(objectId(), p);
}

frmTrace::frmTrace(QWidget* parent, PropertyForm form, const std::string& id, const TraceProps& props)
    : PropertyFormDialog(parent, form == PropertyForm::Locus ? "frmLocusProps" : "frmInterLine",
                         form == PropertyForm::Locus ? tr("Locus Properties") : tr("Intersection Line Properties"),
                         id),
      props_(props) {
  AddInfo(form == PropertyForm::Locus ? tr("Locus:") : tr("Intersection line:"), Q(id));
  AddInfo(QString(), Q(props.info));
  visible_ = AddCheck("chkVisible", tr("&Visible"), props.visible);
  color_ = AddColor("cmdColor", tr("&Colour:"), props.color);
}

std::string frmTrace::Apply() {
  TraceProps p = props_;
  p.visible = visible_->isChecked();
  p.color = color_->color();
  return ApplyTraceProps(objectId(), p);
}

frmNote::frmNote(QWidget* parent, const std::string& id, const NoteProps& props)
    : PropertyFormDialog(parent, "frmNote", tr("Measurement Properties"), id), props_(props) {
  AddInfo(tr("Measurement:"), Q(props.text));
  visible_ = AddCheck("chkVisible", tr("&Visible"), props.visible);
  std::vector<std::string> decimals;
  for (int i = 0; i <= 10; ++i) decimals.push_back(std::to_string(i));
  decimals_ = AddChoice("cboDecimals", tr("&Decimals:"), decimals, props.decimals + 1);
  color_ = AddColor("cmdColor", tr("&Colour:"), props.color);
  std::vector<std::string> sizes = {"Standard"};
  int chosen = 1;
  for (int i = 0; i < kNoteFontSizeCount; ++i) {
    sizes.push_back(std::to_string(kNoteFontSizes[i]));
    if (kNoteFontSizes[i] == props.fontSize) chosen = i + 2;
  }
  // A size read from a file that the list lacks is offered as it is.
  if (props.fontSize > 0 && chosen == 1) {
    sizes.push_back(std::to_string(props.fontSize));
    chosen = static_cast<int>(sizes.size());
  }
  size_ = AddChoice("cboFontSize", tr("Font &size:"), sizes, chosen);
  if (props.canMark) mark_ = AddCheck("chkAngleMark", tr("Angle &mark"), props.angleMark);
}

std::string frmNote::Apply() {
  NoteProps p = props_;
  p.visible = visible_->isChecked();
  p.decimals = ChoiceValue(decimals_) - 1;
  p.color = color_->color();
  p.fontSize = ChoiceValue(size_) <= 1 ? 0 : size_->currentText().toInt();
  if (mark_) p.angleMark = mark_->isChecked();
  return ApplyNoteProps(objectId(), p);
}

}  // namespace vt::app
