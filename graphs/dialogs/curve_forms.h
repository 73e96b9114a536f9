// The windows of the function curves: frmF5, the curve dialog (new curves
// and the editing of one), frmFunCal, the expression pad that a formula
// field of frmF5 opens, and the results panel beside the canvas.
//
// The dialogs hold no rules of their own: the fields go to ConfirmCurveForm
// of graphs/curve_form.h, which checks them, shows the messages and makes or
// changes the curve.
#pragma once

#include <QDialog>
#include <QPointer>
#include <functional>
#include <string>

#include "graphs/curve_form.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMainWindow;
class QPushButton;
class QRadioButton;
class QTabWidget;
class QGridLayout;

namespace vt::app {

class ColorButton;

// frmF5: kept above the main window and not modal. editId "" makes a curve;
// an id edits that curve (EditMode and EditObjectId tell the same).
class frmF5 : public QDialog {
  Q_OBJECT
 public:
  frmF5(QWidget* parent, const std::string& editId);
  const std::string& editId() const { return editId_; }
  // The fields as a form, and the form into the fields.
  CurveForm Form() const;
  void ShowForm(const CurveForm& form);

  void accept() override;
  void done(int result) override;

 private:
  // Lines of the overlay tabs.
  struct LineRow {
    QCheckBox* show;
    ColorButton* color;
    QLineEdit* width;
  };
  struct MarkRow {
    QCheckBox* show;
    ColorButton* color;
    QLineEdit* size;
    QComboBox* symbol;
  };
  struct PlaceRow {
    QCheckBox* show;
    ColorButton* color;
    QLineEdit* width;
    QComboBox* posType;
    QLineEdit* positions;
    QLineEdit* formula;
  };

  void BuildFields();
  QWidget* BuildCurveTab();
  QWidget* BuildIntegralTab();
  QWidget* BuildPointsTab();
  QWidget* BuildLinesTab();
  LineRow AddLineRow(QGridLayout* grid, int row, const QString& key, const QString& caption);
  MarkRow AddMarkRow(QGridLayout* grid, int row, const QString& key, const QString& caption);
  PlaceRow AddPlaceRow(QGridLayout* grid, int row, const QString& key, const QString& caption);
  // Forms and labels after a change of the coordinate system or the form.
  void UpdateFormList();
  void UpdateLabels();
  void OpenPad(QLineEdit* field);

  std::string editId_;
  QRadioButton *optCartesian_, *optPolar_;
  QListWidget* lstForm_;
  QLabel *lblFormula1_, *lblFormula2_, *lblMinU_, *lblMaxU_, *lblSteps_, *lblMinV_, *lblMaxV_;
  QLineEdit *txtFormula1_, *txtFormula2_, *txtMinU_, *txtMaxU_, *txtSteps_, *txtMinV_, *txtMaxV_;
  QPushButton *cmdPad1_, *cmdPad2_;
  ColorButton* cmdLineColor_;
  QLineEdit* txtLineWidth_;
  QComboBox* cboLineStyle_;
  QTabWidget* tabOverlays_;
  QCheckBox* chkCurve_;
  LineRow inverse_, derivative_, parity_;
  QCheckBox* chkIntegral_;
  ColorButton* cmdIntColor_;
  QLineEdit *txtIntFrom_, *txtIntTo_;
  QCheckBox* chkLength_;
  QLineEdit *txtLenFrom_, *txtLenTo_;
  MarkRow roots_, maxima_, minima_, inflexions_;
  PlaceRow tangents_, normals_, curvature_;
};

// frmFunCal: the expression pad. It edits a copy of the field's text, shows
// the field's caption in Text2, and on OK checks the formula (the message
// names the character; the pad stays open) before it writes the text back
// into that field.
class frmFunCal : public QDialog {
  Q_OBJECT
 public:
  frmFunCal(QWidget* parent, QLineEdit* field, const QString& caption = QString());
  // Text at the caret of Text1, the caret behind it, the focus back.
  void Insert(const QString& text);

 private:
  void DeleteBeforeCaret();  // Command21
  void ClearTexts();         // Command19
  void Confirm();            // Command18

  QPointer<QLineEdit> field_;
  QLineEdit *Text1_, *Text2_;
  QListWidget* List1_;
};

// The "..." button beside a formula field (object name `name`): it opens the
// pad on the field, which shows the caption `caption` gives at that moment
// (without a trailing "=" or ":").
QPushButton* PadButton(QWidget* dialog, QLineEdit* field, const QString& name, std::function<QString()> caption);

// Installs frmF5 as the window's curve dialog (graphs/curve_form.h) and the
// results panel: a dock beside the canvas, shown while the curves have lines
// for it. Both go when the window does.
void InstallCurveForms(QMainWindow* mainWindow);

}  // namespace vt::app
