// frmComp: the computed note of "Compute...", new or reopened by a double
// click on a note of NoteType 0.
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/canvas.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "expr/parameters.h"
#include "graphs/dialogs/curve_forms.h"
#include "tools/dialogs/construction_forms.h"
#include "tools/notes.h"

namespace vt::app {

frmComp::frmComp(QWidget* parent, const std::string& editId) : QDialog(parent), editId_(editId) {
  setObjectName("frmComp");
  setWindowTitle(tr("Compute"));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowFlag(Qt::Tool);

  const CNote* note = editId.empty() ? nullptr : Doc.Notes.FindById(editId);
  auto* rows = new QFormLayout;
  auto field = [&](const char* name, const QString& caption, const std::string& text) {
    auto* e = new QLineEdit(QString::fromStdString(text), this);
    e->setObjectName(name);
    e->setMinimumWidth(240);
    rows->addRow(caption, e);
    return e;
  };
  txtName_ = field("txtName", tr("Parameter Name"), note ? note->VarName : std::string());
  {
    // The formula with the pad beside it.
    txtExpression_ = new QLineEdit(QString::fromStdString(note ? note->Para1 : std::string()), this);
    txtExpression_->setObjectName("txtExpression");
    txtExpression_->setMinimumWidth(240);
    auto* row = new QHBoxLayout;
    row->addWidget(txtExpression_);
    row->addWidget(PadButton(this, txtExpression_, "cmdPad", [] { return tr("Expression"); }));
    rows->addRow(tr("Expression"), row);
  }
  txtDescribe_ = field("txtDescribe", tr("Describe"), note ? note->Para3 : std::string());

  // The names an expression can read: parameters first, then the notes, as
  // the evaluator looks them up.
  lstVariables_ = new QListWidget(this);
  lstVariables_->setObjectName("lstVariables");
  lstVariables_->setMaximumHeight(110);
  VariableTable vars;
  const int n = LoadParameterTable(vars);
  for (int i = 1; i <= n; ++i) {
    if (note && vars.Name(i) == note->VarName) continue;
    lstVariables_->addItem(QString::fromStdString(vars.Name(i)));
  }
  connect(lstVariables_, &QListWidget::itemDoubleClicked, this,
          [this](QListWidgetItem* it) { txtExpression_->insert(it->text()); });

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName("cmdOK");
  buttons->button(QDialogButtonBox::Cancel)->setObjectName("cmdCancel");
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* box = new QVBoxLayout(this);
  box->addLayout(rows);
  box->addWidget(new QLabel(tr("Measurements and parameters (double click to insert)"), this));
  box->addWidget(lstVariables_);
  box->addWidget(buttons);
}

void frmComp::accept() {
  if (auto* canvas = parentWidget() ? parentWidget()->findChild<Canvas*>() : nullptr) canvas->MakeCurrent();
  // A note reopened for editing that has gone meanwhile becomes a new note.
  const std::string edit = Doc.Notes.FindById(editId_) ? editId_ : std::string();
  bool ok = false;
  int pos = 0;
  // The formula first: refused, it keeps the dialog open with the caret at
  // the character its message names.
  RunGuarded([&] { ok = ComputeFormulaOK(txtExpression_->text().toStdString(), edit, &pos); });
  if (!ok) {
    txtExpression_->setFocus();
    if (pos > 0) txtExpression_->setCursorPosition(pos - 1);
    return;
  }
  ok = false;
  RunGuarded([&] {
    ok = ComputeNoteOK(txtName_->text().toStdString(), txtExpression_->text().toStdString(),
                       txtDescribe_->text().toStdString(), edit);
  });
  if (!ok) {
    // The name was refused and the message shown: the user corrects it here.
    txtName_->setFocus();
    txtName_->selectAll();
    return;
  }
  QDialog::accept();
}

void frmComp::done(int result) {
  if (EditMode && !editId_.empty() && EditObjectId == editId_) EditMode = false;
  QDialog::done(result);
}

}  // namespace vt::app
