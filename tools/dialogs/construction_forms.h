// The dialogs of the construction, measurement and transformation commands:
// frmComp (a computed note), the four transformation dialogs frmTMove,
// frmTRotate, frmTZoom and frmTMirror (kept above the main window and not
// modal, so that objects can be selected on the canvas while they are open),
// and the prompts frmDFD, frmLineExtP, frmFlexP2D, frm3DCircle and the
// circle-with-radius use of frmCircle. They hold no rules of their own: the
// OK functions of tools/notes.h, tools/transform.h and
// tools/construction_prompts.h check the fields, say what is wrong and build.
#pragma once

#include <QDialog>
#include <map>
#include <string>
#include <vector>

#include "tools/transform.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLayout;
class QLineEdit;
class QListWidget;
class QRadioButton;

namespace vt {
class CNote;
}

namespace vt::app {

class ColorButton;

// frmComp, "Compute": "Parameter Name", "Expression", "Describe", and the
// names that an expression can read (a double click puts one into the
// expression). Given a note of NoteType 0 it edits that note.
class frmComp : public QDialog {
  Q_OBJECT
 public:
  frmComp(QWidget* parent, const std::string& editId);
  void accept() override;
  void done(int result) override;

 private:
  std::string editId_;
  QLineEdit *txtName_, *txtExpression_, *txtDescribe_;
  QListWidget* lstVariables_;
};

// What the four transformation dialogs share: "Objects" (List1) with
// "Select" (Command5), "Transform Itself" (Option1) and "Generate a new
// object" (Option2), OK and Cancel.
class TransformDialog : public QDialog {
  Q_OBJECT
 public:
  // The ids in List1, in order.
  std::vector<std::string> ids() const;

  void accept() override;

 protected:
  TransformDialog(QWidget* parent, const QString& name, const QString& title);
  // The parameters from the fields; false when a field is refused (the
  // message has been shown).
  virtual bool Collect(TransformParams& params) = 0;
  // The layout the dialog puts its own fields in, between the list and the
  // choice of Option1 and Option2.
  QFormLayout* fields() const { return fields_; }
  // A field with a button that puts the id of a selected object into it;
  // `take` picks the id (empty: nothing fits, and `message` is shown).
  QLineEdit* AddIdField(const QString& name, const QString& caption, const QString& buttonName,
                        std::string (*take)(), const char* message);
  // A number field; text that is no number counts as 0.
  QLineEdit* AddNumber(const QString& name, const QString& caption, const QString& text);
  static float NumberOf(const QLineEdit* field);
  // Shows or hides the row of a field made by AddIdField or AddNumber.
  void ShowRow(QLineEdit* field, bool shown);

 private:
  std::map<QLineEdit*, QLayout*> idRows_;
  QListWidget* List1_;
  QRadioButton *Option1_, *Option2_;
  QFormLayout* fields_;
};

class frmTMove : public TransformDialog {
  Q_OBJECT
 public:
  explicit frmTMove(QWidget* parent);

 protected:
  bool Collect(TransformParams& params) override;

 private:
  QRadioButton *Option3_, *Option4_, *Option5_;
  QLineEdit *txtDx_, *txtDy_, *txtDz_, *txtAngle_, *txtDistance_, *txtStart_, *txtEnd_;
};

class frmTRotate : public TransformDialog {
  Q_OBJECT
 public:
  explicit frmTRotate(QWidget* parent);

 protected:
  bool Collect(TransformParams& params) override;

 private:
  QLineEdit *Text1_, *Text2_;
};

class frmTZoom : public TransformDialog {
  Q_OBJECT
 public:
  explicit frmTZoom(QWidget* parent);

 protected:
  bool Collect(TransformParams& params) override;

 private:
  QLineEdit *Text1_, *Text2_;
};

class frmTMirror : public TransformDialog {
  Q_OBJECT
 public:
  explicit frmTMirror(QWidget* parent);

 protected:
  bool Collect(TransformParams& params) override;

 private:
  QLineEdit* Text2_;
};

// The prompts of the constructions that need numbers: a form over OK and
// Cancel, modal to the main window. OK runs Confirm; the dialog closes when
// it built, and stays open after the message otherwise.
class PromptDialog : public QDialog {
  Q_OBJECT
 public:
  void accept() override;

 protected:
  PromptDialog(QWidget* parent, const QString& name, const QString& title);
  virtual bool Confirm() = 0;
  QFormLayout* form() const { return form_; }
  QLineEdit* AddText(const QString& name, const QString& caption, const QString& text);

 private:
  QFormLayout* form_;
};

// frmDFD: the number of parts, "3" to "10".
class frmDFD : public PromptDialog {
  Q_OBJECT
 public:
  explicit frmDFD(QWidget* parent);

 protected:
  bool Confirm() override;

 private:
  QComboBox* cboParts_;
};

// frmLineExtP: epitaxial or interpolated, absolute or relative, the distance.
class frmLineExtP : public PromptDialog {
  Q_OBJECT
 public:
  explicit frmLineExtP(QWidget* parent);

 protected:
  bool Confirm() override;

 private:
  QRadioButton *optEpitaxial_, *optInterpolated_, *optAbsolute_, *optRelative_;
  QLineEdit* txtDistance_;
};

// frmFlexP2D: the angle in degrees and the distance.
class frmFlexP2D : public PromptDialog {
  Q_OBJECT
 public:
  explicit frmFlexP2D(QWidget* parent);

 protected:
  bool Confirm() override;

 private:
  QLineEdit *txtAngle_, *txtDistance_;
};

// frm3DCircle: the radius of the circle about the axis.
class frm3DCircle : public PromptDialog {
  Q_OBJECT
 public:
  explicit frm3DCircle(QWidget* parent);

 protected:
  bool Confirm() override;

 private:
  QLineEdit* txtRadius_;
};

// frmCircle as "Circle With Center And Radius" makes it: the centre (the
// selected point), the radius, style, width, colour and fill.
class frmCircleRadius : public PromptDialog {
  Q_OBJECT
 public:
  explicit frmCircleRadius(QWidget* parent);

 protected:
  bool Confirm() override;

 private:
  QLineEdit *txtRadius_, *txtWidth_;
  QComboBox* cboStyle_;
  ColorButton* cmdColor_;
  QCheckBox* chkFilled_;
};

// Installs the dialogs as the window's: the hooks of "Compute", the four
// transformations and the five prompts, and the double click on a computed
// note. They go when the window does.
void InstallConstructionForms(QWidget* mainWindow);

}  // namespace vt::app
