// frmArc: label, how the arc is shown (arc, sector, bow face), style, width,
// colour.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

#include "geometry/dialogs/property_forms.h"

namespace vt::app {

frmArc::frmArc(QWidget* parent, const std::string& id, const ArcProps& props)
    : PropertyFormDialog(parent, "frmArc", tr("Arc Properties"), id), props_(props) {
  AddInfo(tr("Arc:"), QString::fromStdString(id));
  label_ = AddText("txtLabel", tr("&Label:"), props.label);
  showLabel_ = AddCheck("chkShowLabel", tr("Show la&bel"), !props.hideLabel);
  show_ = AddChoice("cboShow", tr("Show &as:"), ArcShowNames(), props.show);
  style_ = AddChoice("cboStyle", tr("&Style:"), LineStyleNames(), props.style);
  width_ = AddText("txtWidth", tr("&Width:"), props.width);
  color_ = AddColor("cmdColor", tr("&Colour:"), props.color);
}

std::string frmArc::Apply() {
  ArcProps p = props_;
  p.label = Text(label_);
  p.hideLabel = !showLabel_->isChecked();
  p.show = ChoiceValue(show_);
  p.style = ChoiceValue(style_);
  p.width = Text(width_);
  p.color = color_->color();
  return ApplyArcProps(objectId(), p);
}

}  // namespace vt::app
