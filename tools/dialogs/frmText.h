// frmText, the dialog of texts: the text tool asks it for the text of a new
// text (with its font and colour, handed on through TextToolStyle), and the
// double click on a text edits that text with it.
#pragma once

#include <QDialog>
#include <string>

class QComboBox;
class QFontComboBox;
class QLineEdit;

namespace vt::app {

class ColorButton;

// frmText: "Text" in Text1, "Font Size" in Combo1, "Font Color" on Picture1.
// editId "" asks for the text of a new text; otherwise edits that text.
class frmText : public QDialog {
  Q_OBJECT
 public:
  frmText(QWidget* parent, const std::string& editId);
  std::string text() const;
  void accept() override;
  void done(int result) override;

 private:
  std::string editId_;
  QLineEdit* text1_;
  QFontComboBox* font_;
  QComboBox* combo1_;
  ColorButton* picture1_;
};

}  // namespace vt::app
