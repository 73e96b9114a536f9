#include "tools/dialogs/frmText.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "app/canvas.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "document/undo.h"
#include "geometry/dialogs/property_forms.h"
#include "tools/text_item.h"

namespace vt::app {

frmText::frmText(QWidget* parent, const std::string& editId) : QDialog(parent), editId_(editId) {
  setObjectName("frmText");
  setWindowTitle(tr("Text"));
  const CText* t = editId.empty() ? nullptr : Doc.Texts.FindById(editId);
  std::string content, fontName = TextToolStyle.FontName;
  int size = TextToolStyle.FontSize;
  std::uint32_t color = TextToolStyle.ForeColor;
  if (t) {
    content = t->Content;
    fontName = t->FontName;
    size = t->FontSize;
    color = t->ForeColor;
  }
  auto* form = new QFormLayout;
  text1_ = new QLineEdit(QString::fromStdString(content), this);
  text1_->setObjectName("Text1");
  text1_->setMinimumWidth(280);
  form->addRow(tr("Text"), text1_);
  font_ = new QFontComboBox(this);
  font_->setObjectName("cboFont");
  font_->setCurrentFont(QFont(QString::fromStdString(fontName)));
  form->addRow(tr("Font"), font_);
  combo1_ = new QComboBox(this);
  combo1_->setObjectName("Combo1");
  combo1_->setEditable(true);
  for (int i = 0; i < kTextFontSizeCount; ++i) combo1_->addItem(QString::number(kTextFontSizes[i]));
  combo1_->setCurrentText(QString::number(size));
  form->addRow(tr("Font Size"), combo1_);
  picture1_ = new ColorButton(this);
  picture1_->setObjectName("Picture1");
  picture1_->setColor(color);
  form->addRow(tr("Font Color"), picture1_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* box = new QVBoxLayout(this);
  box->addLayout(form);
  box->addWidget(buttons);
}

std::string frmText::text() const { return text1_->text().toStdString(); }

void frmText::accept() {
  bool ok = false;
  const int size = combo1_->currentText().trimmed().toInt(&ok);
  if (!ok || size < 1 || size > 400) {
    host().MsgBox("Illegal data exist.", "Error", MsgButtons::OK, MsgIcon::Critical);
    return;
  }
  const std::string fontName = font_->currentFont().family().toStdString();
  if (!editId_.empty()) {
    CText* t = Doc.Texts.FindById(editId_);
    if (t) {
      if (Canvas* c = parentWidget() ? parentWidget()->findChild<Canvas*>() : nullptr) c->MakeCurrent();
      std::string content = text();
      const size_t a = content.find_first_not_of(' '), b = content.find_last_not_of(' ');
      t->Content = a == std::string::npos ? std::string() : content.substr(a, b - a + 1);
      t->FontName = fontName;
      t->FontSize = size;
      t->ForeColor = picture1_->color();
      PushSnapshot();
      RedrawScene();
    }
  } else {
    TextToolStyle.FontName = fontName;
    TextToolStyle.FontSize = size;
    TextToolStyle.ForeColor = picture1_->color();
  }
  QDialog::accept();
}

void frmText::done(int result) {
  if (EditMode && !editId_.empty() && EditObjectId == editId_) EditMode = false;
  QDialog::done(result);
}

}  // namespace vt::app
