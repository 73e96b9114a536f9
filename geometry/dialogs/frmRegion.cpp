// frmRegion: label, fill colour and opacity.
#include <QCheckBox>
#include <QLineEdit>

#include "geometry/dialogs/property_forms.h"

namespace vt::app {

frmRegion::frmRegion(QWidget* parent, const std::string& id, const RegionProps& props)
    : PropertyFormDialog(parent, "frmRegion", tr("Region Properties"), id), props_(props) {
  AddInfo(tr("Region:"), QString::fromStdString(id));
  label_ = AddText("txtLabel", tr("&Label:"), props.label);
  showLabel_ = AddCheck("chkShowLabel", tr("Show la&bel"), !props.hideLabel);
  color_ = AddColor("cmdColor", tr("&Colour:"), props.color);
  alpha_ = AddText("txtOpacity", tr("&Opacity (0 to 1):"), props.alpha);
}

std::string frmRegion::Apply() {
  RegionProps p = props_;
  p.label = Text(label_);
  p.hideLabel = !showLabel_->isChecked();
  p.color = color_->color();
  p.alpha = Text(alpha_);
  return ApplyRegionProps(objectId(), p);
}

}  // namespace vt::app
