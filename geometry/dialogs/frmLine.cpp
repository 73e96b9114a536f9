// frmLine: label, kind (segment, line, ray, vector), style, width, colour.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

#include "geometry/dialogs/property_forms.h"

namespace vt::app {

frmLine::frmLine(QWidget* parent, const std::string& id, const LineProps& props)
    : PropertyFormDialog(parent, "frmLine", tr("Line Properties"), id), props_(props) {
  AddInfo(tr("Line:"), QString::fromStdString(id));
  label_ = AddText("txtLabel", tr("&Label:"), props.label);
  showLabel_ = AddCheck("chkShowLabel", tr("Show la&bel"), !props.hideLabel);
  kind_ = AddChoice("cboKind", tr("&Kind:"), LineKindNames(), props.lt);
  style_ = AddChoice("cboStyle", tr("&Style:"), LineStyleNames(), props.style);
  width_ = AddText("txtWidth", tr("&Width:"), props.width);
  color_ = AddColor("cmdColor", tr("&Colour:"), props.color);
}

std::string frmLine::Apply() {
  LineProps p = props_;
  p.label = Text(label_);
  p.hideLabel = !showLabel_->isChecked();
  p.lt = ChoiceValue(kind_);
  p.style = ChoiceValue(style_);
  p.width = Text(width_);
  p.color = color_->color();
  return ApplyLineProps(objectId(), p);
}

}  // namespace vt::app
