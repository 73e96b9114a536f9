// frmPointEdit: symbol, size and colour for every selected point at once.
#include <QComboBox>

#include "geometry/dialogs/property_forms.h"

namespace vt::app {

frmPointEdit::frmPointEdit(QWidget* parent, const PointStyle& style, int count)
    : PropertyFormDialog(parent, "frmPointEdit", tr("Point Properties"), std::string()) {
  AddInfo(tr("Applies to:"), count == 1 ? tr("1 selected point") : tr("%1 selected points").arg(count));
  symbol_ = AddChoice("cboSymbol", tr("&Symbol:"), SymbolNames(), style.symbol);
  std::vector<std::string> sizes;
  for (int i = 1; i <= 9; ++i) sizes.push_back(std::to_string(i));
  size_ = AddChoice("cboSize", tr("Si&ze:"), sizes, style.size);
  color_ = AddColor("cmdColor", tr("&Colour:"), style.color);
}

std::string frmPointEdit::Apply() {
  PointStyle s;
  s.symbol = ChoiceValue(symbol_);
  s.size = ChoiceValue(size_);
  s.color = color_->color();
  return ApplyPointStyleToSelection(s);
}

}  // namespace vt::app
