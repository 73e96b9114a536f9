// The property dialogs of points, lines, circles, arcs and regions: frmF16
// (one point), frmPointEdit (the style of every selected point), frmLine,
// frmCircle, frmArc and frmRegion; of sectors, ribbons and spheres
// (frmSector, frmRibbon, frmSphereProps), intersection lines and loci
// (frmInterLine, frmLocusProps) and measurement notes (frmNote). Each is a small form of labelled fields
// over OK and Cancel, modal to the main window and kept above it.
//
// The dialogs hold no rules of their own: they show what the Load functions
// of geometry/properties.h give and hand the fields to the Apply functions on
// OK. A refused field leaves the dialog open with what the user typed, after
// a message box titled "Error" has said why.
#pragma once

#include <QDialog>
#include <QPushButton>
#include <cstdint>
#include <string>
#include <vector>

#include "geometry/properties.h"
#include "geometry/property_commands.h"
#include "tools/note_properties.h"

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QFormLayout;
class QLabel;
class QLineEdit;

namespace vt::app {

// A button that shows a colour (red + 256 green + 65536 blue) and offers the
// colour dialog of the host when clicked.
class ColorButton : public QPushButton {
  Q_OBJECT
 public:
  explicit ColorButton(QWidget* parent = nullptr);
  std::uint32_t color() const { return color_; }
  void setColor(std::uint32_t color);

 signals:
  void colorChanged(std::uint32_t color);

 private:
  void Choose();
  std::uint32_t color_ = 0;
};

// What the property dialogs share: the form, the buttons, the OK that
// applies, and the end of the edit state when the dialog closes.
class PropertyFormDialog : public QDialog {
  Q_OBJECT
 public:
  // The object the dialog edits ("" for frmPointEdit).
  const std::string& objectId() const { return objectId_; }
  // Runs Apply with the canvas's context current; closes on success, shows
  // the message and stays open otherwise.
  void accept() override;
  void done(int result) override;

 protected:
  PropertyFormDialog(QWidget* parent, const QString& name, const QString& title, const std::string& objectId);
  // Validates and applies the fields: "" on success, or the message to show.
  virtual std::string Apply() = 0;

  // Rows of the form; `name` is the field's object name.
  QLabel* AddInfo(const QString& caption, const QString& text);
  QLineEdit* AddText(const QString& name, const QString& caption, const std::string& text);
  // A drop-down list of names; `value` is 1-based (0 or out of range: none
  // chosen).
  QComboBox* AddChoice(const QString& name, const QString& caption, const std::vector<std::string>& names,
                       int value);
  QCheckBox* AddCheck(const QString& name, const QString& text, bool checked);
  ColorButton* AddColor(const QString& name, const QString& caption, std::uint32_t color);
  // The 1-based value of a drop-down list (0 when none is chosen).
  static int ChoiceValue(const QComboBox* box);
  static std::string Text(const QLineEdit* field);

 private:
  std::string objectId_;
  QFormLayout* form_ = nullptr;
  QDialogButtonBox* buttons_ = nullptr;
};

class frmF16 : public PropertyFormDialog {
  Q_OBJECT
 public:
  frmF16(QWidget* parent, const std::string& id, const PointProps& props, int ptype);

 protected:
  std::string Apply() override;

 private:
  PointProps props_;
  QLineEdit *label_, *x_, *y_, *z_;
  QCheckBox* showLabel_;
  QComboBox *symbol_, *size_;
  ColorButton* color_;
};

class frmPointEdit : public PropertyFormDialog {
  Q_OBJECT
 public:
  // count: how many points are selected.
  frmPointEdit(QWidget* parent, const PointStyle& style, int count);

 protected:
  std::string Apply() override;

 private:
  QComboBox *symbol_, *size_;
  ColorButton* color_;
};

class frmLine : public PropertyFormDialog {
  Q_OBJECT
 public:
  frmLine(QWidget* parent, const std::string& id, const LineProps& props);

 protected:
  std::string Apply() override;

 private:
  LineProps props_;
  QLineEdit *label_, *width_;
  QCheckBox* showLabel_;
  QComboBox *kind_, *style_;
  ColorButton* color_;
};

class frmCircle : public PropertyFormDialog {
  Q_OBJECT
 public:
  frmCircle(QWidget* parent, const std::string& id, const CircleProps& props);

 protected:
  std::string Apply() override;

 private:
  CircleProps props_;
  QLineEdit *label_, *radius_, *width_;
  QCheckBox *showLabel_, *filled_;
  QComboBox* style_;
  ColorButton* color_;
};

class frmArc : public PropertyFormDialog {
  Q_OBJECT
 public:
  frmArc(QWidget* parent, const std::string& id, const ArcProps& props);

 protected:
  std::string Apply() override;

 private:
  ArcProps props_;
  QLineEdit *label_, *width_;
  QCheckBox* showLabel_;
  QComboBox *show_, *style_;
  ColorButton* color_;
};

class frmRegion : public PropertyFormDialog {
  Q_OBJECT
 public:
  frmRegion(QWidget* parent, const std::string& id, const RegionProps& props);

 protected:
  std::string Apply() override;

 private:
  RegionProps props_;
  QLineEdit *label_, *alpha_;
  QCheckBox* showLabel_;
  ColorButton* color_;
};

// frmSector, frmRibbon, frmSphereProps: colouring, colours, ramp, opacity,
// visibility; a sphere's angle ranges.
class frmMeshSurface : public PropertyFormDialog {
  Q_OBJECT
 public:
  frmMeshSurface(QWidget* parent, PropertyForm form, const std::string& id, const MeshSurfaceProps& props);

 protected:
  std::string Apply() override;

 private:
  MeshSurfaceProps props_;
  QComboBox *fill_, *ramp_;
  ColorButton *color_, *color2_;
  QLineEdit *alpha_, *aFrom_ = nullptr, *aTo_ = nullptr, *bFrom_ = nullptr, *bTo_ = nullptr;
  QCheckBox* visible_;
};

// frmInterLine, frmLocusProps: colour and visibility.
class frmTrace : public PropertyFormDialog {
  Q_OBJECT
 public:
  frmTrace(QWidget* parent, PropertyForm form, const std::string& id, const TraceProps& props);

 protected:
  std::string Apply() override;

 private:
  TraceProps props_;
  ColorButton* color_;
  QCheckBox* visible_;
};

// frmNote: a measurement's decimals, colour and font size.
class frmNote : public PropertyFormDialog {
  Q_OBJECT
 public:
  frmNote(QWidget* parent, const std::string& id, const NoteProps& props);

 protected:
  std::string Apply() override;

 private:
  NoteProps props_;
  QComboBox *decimals_, *size_;
  ColorButton* color_;
  QCheckBox* visible_;
  QCheckBox* mark_ = nullptr;  // angles of three points only
};

// Makes the dialog of a form for an object, loaded from the document and not
// yet shown; nullptr when the object cannot be loaded (frmPointEdit: when no
// point is selected).
PropertyFormDialog* CreatePropertyForm(PropertyForm form, const std::string& id, QWidget* parent);

// Installs the property dialogs as the window's opener of the property
// commands (geometry/property_commands.h), parented to the main window. The
// opener goes when the window does.
void InstallPropertyForms(QWidget* mainWindow);

}  // namespace vt::app
