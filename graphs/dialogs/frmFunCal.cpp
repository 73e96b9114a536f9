// frmFunCal: the expression pad. Text1 holds the formula, Text2 a second
// line (the field the pad writes to), List1 the functions. Command1 to
// Command16 and Command22 to Command26 insert digits, the point, operators,
// parentheses, x, pi and e at the caret; Command17 inserts the chosen function (so
// does a double click in List1); Command18 confirms, Command19 clears,
// Command20 closes, Command21 deletes the character before the caret.
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "document/host.h"
#include "expr/expression.h"
#include "expr/functions.h"
#include "expr/parameters.h"
#include "expr/text_prep.h"
#include "graphs/dialogs/curve_forms.h"

namespace vt::app {

namespace {

QPushButton* Command(QWidget* parent, int number, const QString& caption) {
  auto* b = new QPushButton(caption, parent);
  b->setObjectName(QString("Command%1").arg(number));
  b->setAutoDefault(false);
  b->setMinimumWidth(36);
  return b;
}

}  // namespace

QPushButton* PadButton(QWidget* dialog, QLineEdit* field, const QString& name, std::function<QString()> caption) {
  auto* b = new QPushButton("...", dialog);
  b->setObjectName(name);
  b->setAutoDefault(false);
  b->setToolTip(QObject::tr("Expression pad"));
  b->setMaximumWidth(32);
  QObject::connect(b, &QPushButton::clicked, dialog, [dialog, field, caption = std::move(caption)] {
    QString text = caption ? caption() : QString();
    text = text.trimmed();
    while (text.endsWith('=') || text.endsWith(':')) text = text.left(text.size() - 1).trimmed();
    (new frmFunCal(dialog, field, text))->open();
  });
  return b;
}

frmFunCal::frmFunCal(QWidget* parent, QLineEdit* field, const QString& caption) : QDialog(parent), field_(field) {
  setObjectName("frmFunCal");
  setWindowTitle(tr("Expression"));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowModality(Qt::WindowModal);

  auto* outer = new QVBoxLayout(this);
  Text1_ = new QLineEdit(field ? field->text() : QString(), this);
  Text1_->setObjectName("Text1");
  Text1_->setMinimumWidth(320);
  Text2_ = new QLineEdit(this);
  Text2_->setObjectName("Text2");
  // The field the pad writes to, by its caption as the dialog shows it.
  Text2_->setText(caption);
  outer->addWidget(Text1_);
  outer->addWidget(Text2_);

  auto* middle = new QHBoxLayout();
  outer->addLayout(middle);
  auto* keys = new QGridLayout();
  middle->addLayout(keys);
  // The keypad: what each key inserts.
  struct Key {
    int number;
    const char* text;
  };
  static const Key kKeys[] = {{7, "7"},   {8, "8"},   {9, "9"},   {15, "/"}, {4, "4"},  {5, "5"},
                              {6, "6"},   {14, "*"},  {1, "1"},   {2, "2"},  {3, "3"},  {13, "-"},
                              {10, "0"},  {11, "."},  {16, "^"},  {12, "+"}, {22, "("}, {23, ")"},
                              {24, "x"},  {25, "pi"}, {26, "e"}};
  int slot = 0;
  for (const Key& k : kKeys) {
    QPushButton* b = Command(this, k.number, k.text);
    const QString text = k.text;
    connect(b, &QPushButton::clicked, this, [this, text] { Insert(text); });
    keys->addWidget(b, slot / 4, slot % 4);
    ++slot;
  }

  auto* side = new QVBoxLayout();
  middle->addLayout(side);
  List1_ = new QListWidget(this);
  List1_->setObjectName("List1");
  for (int i = 0; i < kFunctionCount; ++i)
    List1_->addItem(QString(FunctionName(static_cast<Fn>(i))).toLower());
  List1_->setCurrentRow(0);
  side->addWidget(List1_);
  QPushButton* insertFunction = Command(this, 17, tr("Insert"));
  side->addWidget(insertFunction);
  auto insertChosen = [this] {
    if (QListWidgetItem* item = List1_->currentItem()) Insert(item->text() + "(");
  };
  connect(insertFunction, &QPushButton::clicked, this, insertChosen);
  connect(List1_, &QListWidget::itemDoubleClicked, this, insertChosen);

  auto* bottom = new QHBoxLayout();
  outer->addLayout(bottom);
  QPushButton* del = Command(this, 21, tr("Delete"));
  QPushButton* clear = Command(this, 19, tr("Clear"));
  QPushButton* ok = Command(this, 18, tr("OK"));
  QPushButton* close = Command(this, 20, tr("Close"));
  ok->setDefault(true);
  for (QPushButton* b : {del, clear, ok, close}) bottom->addWidget(b);
  connect(del, &QPushButton::clicked, this, [this] { DeleteBeforeCaret(); });
  connect(clear, &QPushButton::clicked, this, [this] { ClearTexts(); });
  connect(ok, &QPushButton::clicked, this, [this] { Confirm(); });
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
}

void frmFunCal::Insert(const QString& text) {
  const int caret = Text1_->cursorPosition();
  const QString all = Text1_->text();
  Text1_->setText(all.left(caret) + text + all.mid(caret));
  Text1_->setFocus();
  Text1_->setCursorPosition(caret + static_cast<int>(text.size()));
}

void frmFunCal::DeleteBeforeCaret() {
  const int caret = Text1_->cursorPosition();
  if (caret > 0) {
    const QString all = Text1_->text();
    Text1_->setText(all.left(caret - 1) + all.mid(caret));
    Text1_->setCursorPosition(caret - 1);
  }
  Text1_->setFocus();
}

void frmFunCal::ClearTexts() {
  Text1_->clear();
  Text2_->clear();
  Text1_->setFocus();
}

void frmFunCal::Confirm() {
  ReportEvalErrors = true;
  std::string source = Text1_->text().toStdString(), result;
  const bool ok = !Text1_->isVisible() || FilterExprText(source, result);
  if (ok && Text1_->isVisible()) Text1_->setText(QString::fromStdString(result));
  ReportEvalErrors = false;
  if (!ok) {
    host().MsgBox("Illegal expression exist.", "Error", MsgButtons::OK, MsgIcon::Critical);
    return;
  }
  if (Text1_->isVisible()) {
    // The formula may read the parameters, the notes and the variables of
    // any formula field; what the field itself cannot read its own OK says.
    VariableTable vars;
    LoadParameterTable(vars);
    for (const char* name : {"x", "y", "z", "u", "v", "t"})
      if (!vars.Find(name)) vars.Add(name);
    int pos = 0;
    if (!FormulaCompiles(InsertImplicitProducts(Text1_->text().toStdString()), vars, &pos)) {
      Text1_->setFocus();
      if (pos > 0) Text1_->setCursorPosition(pos - 1);
      return;
    }
  }
  if (field_) field_->setText(Text1_->text());
  accept();
}

}  // namespace vt::app
