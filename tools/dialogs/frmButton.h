// The dialogs of control buttons: frmButton (show/hide, link and sample
// buttons), frmButton2 (scroll buttons, kept above the main window and not
// modal, so that objects can be selected one by one while it is open) and
// frmButton3 (command buttons). The rules live in tools/buttons.h.
#pragma once

#include <QDialog>
#include <string>

#include "tools/buttons.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QRadioButton;
class QWidget;

namespace vt::app {

// The dialogs of buttons share the caption and OK.
class ButtonDialog : public QDialog {
  Q_OBJECT
 public:
  void accept() override;
  void done(int result) override;

 protected:
  ButtonDialog(QWidget* parent, const QString& name, const QString& title, const ButtonForm& form,
               const std::string& editId);
  virtual void Collect(ButtonForm& form) const = 0;
  ButtonForm form_;
  std::string editId_;
  QLineEdit* caption_;
};

class frmButton : public ButtonDialog {
  Q_OBJECT
 public:
  frmButton(QWidget* parent, const ButtonForm& form, const std::string& editId);

 protected:
  void Collect(ButtonForm& form) const override;

 private:
  QLineEdit* path_ = nullptr;
  QRadioButton *related_ = nullptr, *absolute_ = nullptr;
  QLabel* setup_ = nullptr;
};

class frmButton2 : public ButtonDialog {
  Q_OBJECT
 public:
  frmButton2(QWidget* parent, const ButtonForm& form, const std::string& editId);

 protected:
  void Collect(ButtonForm& form) const override;

 private:
  QListWidget* objects_;
};

class frmButton3 : public ButtonDialog {
  Q_OBJECT
 public:
  frmButton3(QWidget* parent, const ButtonForm& form, const std::string& editId);

 protected:
  void Collect(ButtonForm& form) const override;

 private:
  QListWidget *all_, *chosen_;
};

// The text tool's dialog, the button dialogs and the double click on texts
// and buttons, for one main window.
void InstallScreenItemForms(QWidget* mainWindow);

}  // namespace vt::app
