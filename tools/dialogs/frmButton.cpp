#include "tools/dialogs/frmButton.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/canvas.h"
#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "tools/canvas_input.h"
#include "tools/create_tools.h"
#include "tools/dialogs/frmText.h"

namespace vt::app {

namespace {

Canvas* CanvasOfWindow(QWidget* w) { return w ? w->findChild<Canvas*>() : nullptr; }

QDialogButtonBox* OkCancel(QDialog* d) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, d);
  QObject::connect(buttons, &QDialogButtonBox::accepted, d, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, d, &QDialog::reject);
  return buttons;
}

}  // namespace

// ---- the common part -------------------------------------------------------------------

ButtonDialog::ButtonDialog(QWidget* parent, const QString& name, const QString& title, const ButtonForm& form,
                           const std::string& editId)
    : QDialog(parent), form_(form), editId_(editId) {
  setObjectName(name);
  setWindowTitle(title);
  setAttribute(Qt::WA_DeleteOnClose);
  caption_ = new QLineEdit(QString::fromStdString(form.Label), this);
  caption_->setObjectName("txtCaption");
}

void ButtonDialog::accept() {
  ButtonForm f = form_;
  f.Label = caption_->text().toStdString();
  Collect(f);
  if (Canvas* c = CanvasOfWindow(parentWidget())) c->MakeCurrent();
  CButton* made = nullptr;
  RunGuarded([&] { made = ConfirmButtonForm(f, editId_); });
  if (!made && !editId_.empty()) {
    host().MsgBox("The object does not exist.", "Error", MsgButtons::OK, MsgIcon::Exclamation);
    return;
  }
  QDialog::accept();
}

void ButtonDialog::done(int result) {
  if (EditMode && !editId_.empty() && EditObjectId == editId_) EditMode = false;
  QDialog::done(result);
}

// ---- frmButton --------------------------------------------------------------------------

frmButton::frmButton(QWidget* parent, const ButtonForm& form, const std::string& editId)
    : ButtonDialog(parent, "frmButton", tr("Button"), form, editId) {
  auto* box = new QVBoxLayout(this);
  auto* rows = new QFormLayout;
  rows->addRow(tr("Caption"), caption_);
  box->addLayout(rows);
  if (form.BTType == 2 || form.BTType == 3) {
    auto* pathBox = new QGroupBox(form.BTType == 3 ? tr("File Path") : QString(), this);
    auto* pathRows = new QVBoxLayout(pathBox);
    auto* line = new QHBoxLayout;
    line->addWidget(new QLabel(tr("File Path:"), pathBox));
    setup_ = new QLabel(tr("Setup Path +"), pathBox);
    line->addWidget(setup_);
    path_ = new QLineEdit(QString::fromStdString(form.Para1), pathBox);
    path_->setObjectName("txtPath");
    path_->setMinimumWidth(260);
    line->addWidget(path_);
    pathRows->addLayout(line);
    related_ = new QRadioButton(tr("Related Path"), pathBox);
    related_->setObjectName("optRelated");
    absolute_ = new QRadioButton(tr("Absolute Path"), pathBox);
    absolute_->setObjectName("optAbsolute");
    pathRows->addWidget(related_);
    pathRows->addWidget(absolute_);
    (form.PathType == 1 ? absolute_ : related_)->setChecked(true);
    setup_->setVisible(form.PathType != 1);
    connect(related_, &QRadioButton::toggled, setup_, &QLabel::setVisible);
    box->addWidget(pathBox);
  }
  box->addWidget(OkCancel(this));
}

void frmButton::Collect(ButtonForm& form) const {
  if (!path_) return;
  form.Para1 = path_->text().toStdString();
  form.PathType = absolute_->isChecked() ? 1 : 2;
}

// ---- frmButton2, scroll buttons ------------------------------------------------------------

frmButton2::frmButton2(QWidget* parent, const ButtonForm& form, const std::string& editId)
    : ButtonDialog(parent, "frmButton2", tr("Scroll Button"), form, editId) {
  auto* box = new QVBoxLayout(this);
  auto* rows = new QFormLayout;
  rows->addRow(tr("Caption"), caption_);
  box->addLayout(rows);
  box->addWidget(new QLabel(tr("Select Objects One By One"), this));
  objects_ = new QListWidget(this);
  objects_->setObjectName("lstObjects");
  for (const std::string& id : form.ObjIDs) objects_->addItem(QString::fromStdString(id));
  box->addWidget(objects_);
  auto* line = new QHBoxLayout;
  auto* add = new QPushButton(tr("Add Selected"), this);
  add->setObjectName("cmdAdd");
  auto* remove = new QPushButton(tr("Remove"), this);
  remove->setObjectName("cmdRemove");
  line->addWidget(add);
  line->addWidget(remove);
  box->addLayout(line);
  // Objects selected on the canvas since the last press join the end of the
  // list, in the order in which they are found.
  connect(add, &QPushButton::clicked, this, [this] {
    for (const std::string& id : SelectedObjectIds()) {
      const QString q = QString::fromStdString(id);
      if (objects_->findItems(q, Qt::MatchExactly).isEmpty()) objects_->addItem(q);
    }
  });
  connect(remove, &QPushButton::clicked, this, [this] { delete objects_->currentItem(); });
  box->addWidget(OkCancel(this));
}

void frmButton2::Collect(ButtonForm& form) const {
  form.ObjIDs.clear();
  for (int i = 0; i < objects_->count(); ++i) form.ObjIDs.push_back(objects_->item(i)->text().toStdString());
}

// ---- frmButton3, command buttons -------------------------------------------------------------

frmButton3::frmButton3(QWidget* parent, const ButtonForm& form, const std::string& editId)
    : ButtonDialog(parent, "frmButton3", tr("Command Button"), form, editId) {
  auto* box = new QVBoxLayout(this);
  auto* rows = new QFormLayout;
  rows->addRow(tr("Caption"), caption_);
  box->addLayout(rows);
  box->addWidget(new QLabel(tr("Select Commands"), this));
  auto* lists = new QHBoxLayout;
  all_ = new QListWidget(this);
  all_->setObjectName("lstCommands");
  for (const CommandNameDef& c : CommandTable()) all_->addItem(QString::fromUtf8(c.command));
  chosen_ = new QListWidget(this);
  chosen_->setObjectName("lstChosen");
  for (const std::string& c : form.ObjIDs) chosen_->addItem(QString::fromStdString(c));
  auto* middle = new QVBoxLayout;
  auto* add = new QPushButton(tr("Add >"), this);
  add->setObjectName("cmdAdd");
  auto* remove = new QPushButton(tr("< Remove"), this);
  remove->setObjectName("cmdRemove");
  auto* up = new QPushButton(tr("Up"), this);
  auto* down = new QPushButton(tr("Down"), this);
  for (QPushButton* b : {add, remove, up, down}) middle->addWidget(b);
  middle->addStretch();
  lists->addWidget(all_);
  lists->addLayout(middle);
  lists->addWidget(chosen_);
  box->addLayout(lists);
  connect(add, &QPushButton::clicked, this, [this] {
    if (QListWidgetItem* it = all_->currentItem()) chosen_->addItem(it->text());
  });
  connect(all_, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* it) { chosen_->addItem(it->text()); });
  connect(remove, &QPushButton::clicked, this, [this] { delete chosen_->currentItem(); });
  auto move = [this](int by) {
    const int row = chosen_->currentRow();
    const int to = row + by;
    if (row < 0 || to < 0 || to >= chosen_->count()) return;
    QListWidgetItem* it = chosen_->takeItem(row);
    chosen_->insertItem(to, it);
    chosen_->setCurrentRow(to);
  };
  connect(up, &QPushButton::clicked, this, [move] { move(-1); });
  connect(down, &QPushButton::clicked, this, [move] { move(1); });
  box->addWidget(OkCancel(this));
}

void frmButton3::Collect(ButtonForm& form) const {
  form.ObjIDs.clear();
  for (int i = 0; i < chosen_->count(); ++i) form.ObjIDs.push_back(chosen_->item(i)->text().toStdString());
}

// ---- installation -------------------------------------------------------------------------

void InstallScreenItemForms(QWidget* mainWindow) {
  static int installed = 0;
  const int mine = ++installed;
  QPointer<QWidget> window(mainWindow);

  TextToolDialog = [window](std::string& text) {
    if (!window) return false;
    frmText dialog(window, std::string());
    const bool accepted = dialog.exec() == QDialog::Accepted;
    // The dialog's event loop leaves another context current; the text is
    // drawn on the canvas right after.
    if (Canvas* c = CanvasOfWindow(window)) c->MakeCurrent();
    if (!accepted) return false;
    text = dialog.text();
    return true;
  };
  RegisterEditDialog(Kind::TT, [window](DocObject& o) {
    if (!window) return;
    auto* d = new frmText(window, o.ID);
    d->setAttribute(Qt::WA_DeleteOnClose);
    d->open();
  });
  SetButtonFormOpener([window](int type, const std::string& editId) {
    if (!window) return;
    ButtonForm form;
    if (editId.empty()) {
      form = NewButtonForm(type);
    } else if (const CButton* b = Doc.Buttons.FindById(editId)) {
      form = ButtonFormOf(*b);
    } else {
      return;
    }
    if (type == 4) {
      // Above the main window and not modal: the canvas stays usable.
      auto* d = new frmButton2(window, form, editId);
      d->setWindowFlag(Qt::Tool);
      d->show();
      d->raise();
      return;
    }
    QDialog* d = type == 5 ? static_cast<QDialog*>(new frmButton3(window, form, editId))
                           : static_cast<QDialog*>(new frmButton(window, form, editId));
    d->open();
  });
  QObject::connect(mainWindow, &QObject::destroyed, [mine] {
    if (mine == installed) SetButtonFormOpener({});
  });
}

}  // namespace vt::app
