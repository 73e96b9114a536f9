// frmCircle: label, radius (circles of a given radius only), style, width,
// colour, filled disc.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

#include "geometry/dialogs/property_forms.h"

namespace vt::app {

frmCircle::frmCircle(QWidget* parent, const std::string& id, const CircleProps& props)
    : PropertyFormDialog(parent, "frmCircle", tr("Circle Properties"), id), props_(props) {
  AddInfo(tr("Circle:"), QString::fromStdString(id));
  label_ = AddText("txtLabel", tr("&Label:"), props.label);
  showLabel_ = AddCheck("chkShowLabel", tr("Show la&bel"), !props.hideLabel);
  radius_ = AddText("txtRadius", tr("&Radius:"), props.radius);
  radius_->setReadOnly(!props.radiusEditable);
  if (!props.radiusEditable) radius_->setToolTip(tr("The radius follows the points the circle is built on."));
  style_ = AddChoice("cboStyle", tr("&Style:"), LineStyleNames(), props.style);
  width_ = AddText("txtWidth", tr("&Width:"), props.width);
  color_ = AddColor("cmdColor", tr("&Colour:"), props.color);
  filled_ = AddCheck("chkFilled", tr("&Filled"), props.filled);
}

std::string frmCircle::Apply() {
  CircleProps p = props_;
  p.label = Text(label_);
  p.hideLabel = !showLabel_->isChecked();
  p.radius = Text(radius_);
  p.style = ChoiceValue(style_);
  p.width = Text(width_);
  p.color = color_->color();
  p.filled = filled_->isChecked();
  return ApplyCircleProps(objectId(), p);
}

}  // namespace vt::app
