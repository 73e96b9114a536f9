// frmF16: one point: label, coordinates (free and following points only),
// symbol, size and colour.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

#include "geometry/dialogs/property_forms.h"

namespace vt::app {

namespace {

QString PointKindText(int ptype) {
  switch (ptype) {
    case 1: return QObject::tr("free point");
    case 2: return QObject::tr("auxiliary point");
    case 3: return QObject::tr("computed end point");
    case 4: return QObject::tr("intersection point");
    case 5: return QObject::tr("point of tangency");
    case 6: return QObject::tr("epitaxial or interpolated point");
    case 7: return QObject::tr("point on an object");
    case 8: return QObject::tr("following point");
    case 9: return QObject::tr("division point");
    case 10: return QObject::tr("transformed image");
    case 11: return QObject::tr("directed extension point");
    case 12: return QObject::tr("vertical extension point");
    case 21: return QObject::tr("circumcenter");
    case 22: return QObject::tr("incenter");
    case 23: return QObject::tr("orthocenter");
    case 24: return QObject::tr("barycenter");
    case 25: return QObject::tr("Fermat point");
    default: return QObject::tr("point");
  }
}

std::vector<std::string> SizeNames() {
  std::vector<std::string> names;
  for (int i = 1; i <= 9; ++i) names.push_back(std::to_string(i));
  return names;
}

}  // namespace

frmF16::frmF16(QWidget* parent, const std::string& id, const PointProps& props, int ptype)
    : PropertyFormDialog(parent, "frmF16", tr("Point Properties"), id), props_(props) {
  AddInfo(tr("Point:"), QString::fromStdString(id) + " (" + PointKindText(ptype) + ")");
  label_ = AddText("txtLabel", tr("&Label:"), props.label);
  showLabel_ = AddCheck("chkShowLabel", tr("Show la&bel"), !props.hideLabel);
  x_ = AddText("txtX", tr("&x:"), props.x);
  y_ = AddText("txtY", tr("&y:"), props.y);
  z_ = AddText("txtZ", tr("&z:"), props.z);
  for (QLineEdit* f : {x_, y_, z_}) {
    f->setReadOnly(!props.coordsEditable);
    if (!props.coordsEditable) f->setToolTip(tr("The place of a constructed point follows its construction."));
  }
  symbol_ = AddChoice("cboSymbol", tr("&Symbol:"), SymbolNames(), props.symbol);
  size_ = AddChoice("cboSize", tr("Si&ze:"), SizeNames(), props.size);
  color_ = AddColor("cmdColor", tr("&Colour:"), props.color);
}

std::string frmF16::Apply() {
  PointProps p = props_;
  p.label = Text(label_);
  p.hideLabel = !showLabel_->isChecked();
  p.x = Text(x_);
  p.y = Text(y_);
  p.z = Text(z_);
  p.symbol = ChoiceValue(symbol_);
  p.size = ChoiceValue(size_);
  p.color = color_->color();
  return ApplyPointProps(objectId(), p);
}

}  // namespace vt::app
