#include "geometry/dialogs/property_forms.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QVBoxLayout>

#include "app/canvas.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"

namespace vt::app {

namespace {

QColor ToQColor(std::uint32_t c) {
  return QColor(static_cast<int>(c & 0xFF), static_cast<int>((c >> 8) & 0xFF), static_cast<int>((c >> 16) & 0xFF));
}

// The canvas of the main window, whose context the core draws into.
Canvas* CanvasOf(QWidget* window) { return window ? window->findChild<Canvas*>() : nullptr; }

}  // namespace

// ---- the colour button ---------------------------------------------------------------

ColorButton::ColorButton(QWidget* parent) : QPushButton(parent) {
  setIconSize(QSize(36, 14));
  setColor(0);
  connect(this, &QPushButton::clicked, this, &ColorButton::Choose);
}

void ColorButton::setColor(std::uint32_t color) {
  const bool changed = color != color_;
  color_ = color;
  QPixmap swatch(iconSize());
  swatch.fill(ToQColor(color));
  QPainter painter(&swatch);
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawRect(swatch.rect().adjusted(0, 0, -1, -1));
  painter.end();
  setIcon(QIcon(swatch));
  const QColor c = ToQColor(color);
  setText(QString("%1, %2, %3").arg(c.red()).arg(c.green()).arg(c.blue()));
  setToolTip(tr("Red, green, blue. Click to choose another colour."));
  if (changed) emit colorChanged(color);
}

void ColorButton::Choose() {
  std::uint32_t c = color_;
  if (host().ColorDialog(c)) setColor(c);
}

// ---- the dialogs' common part -----------------------------------------------------------

PropertyFormDialog::PropertyFormDialog(QWidget* parent, const QString& name, const QString& title,
                                       const std::string& objectId)
    : QDialog(parent), objectId_(objectId) {
  setObjectName(name);
  setWindowTitle(title);
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowModality(Qt::WindowModal);
  setSizeGripEnabled(false);

  auto* outer = new QVBoxLayout(this);
  outer->setSizeConstraint(QLayout::SetFixedSize);
  form_ = new QFormLayout();
  form_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  form_->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
  outer->addLayout(form_);
  outer->addSpacing(6);
  buttons_ = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons_->button(QDialogButtonBox::Ok)->setObjectName("cmdOK");
  buttons_->button(QDialogButtonBox::Cancel)->setObjectName("cmdCancel");
  buttons_->button(QDialogButtonBox::Ok)->setDefault(true);
  connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
  outer->addWidget(buttons_);
}

QLabel* PropertyFormDialog::AddInfo(const QString& caption, const QString& text) {
  auto* label = new QLabel(text, this);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  form_->addRow(caption, label);
  return label;
}

QLineEdit* PropertyFormDialog::AddText(const QString& name, const QString& caption, const std::string& text) {
  auto* field = new QLineEdit(QString::fromStdString(text), this);
  field->setObjectName(name);
  field->setMinimumWidth(160);
  form_->addRow(caption, field);
  return field;
}

QComboBox* PropertyFormDialog::AddChoice(const QString& name, const QString& caption,
                                         const std::vector<std::string>& names, int value) {
  auto* box = new QComboBox(this);
  box->setObjectName(name);
  for (const std::string& n : names) box->addItem(QString::fromStdString(n));
  box->setCurrentIndex(value >= 1 && value <= static_cast<int>(names.size()) ? value - 1 : -1);
  form_->addRow(caption, box);
  return box;
}

QCheckBox* PropertyFormDialog::AddCheck(const QString& name, const QString& text, bool checked) {
  auto* box = new QCheckBox(text, this);
  box->setObjectName(name);
  box->setChecked(checked);
  form_->addRow(QString(), box);
  return box;
}

ColorButton* PropertyFormDialog::AddColor(const QString& name, const QString& caption, std::uint32_t color) {
  auto* button = new ColorButton(this);
  button->setObjectName(name);
  button->setColor(color);
  button->setAutoDefault(false);
  form_->addRow(caption, button);
  return button;
}

int PropertyFormDialog::ChoiceValue(const QComboBox* box) { return box->currentIndex() + 1; }

std::string PropertyFormDialog::Text(const QLineEdit* field) { return field->text().toStdString(); }

void PropertyFormDialog::accept() {
  if (Canvas* canvas = CanvasOf(parentWidget())) canvas->MakeCurrent();
  std::string message;
  // A fault inside is shown by RunGuarded; the dialog stays, so the user can
  // still cancel or try again.
  if (!RunGuarded([&] { message = Apply(); })) return;
  if (!message.empty()) {
    host().MsgBox(message, "Error", MsgButtons::OK, MsgIcon::Exclamation);
    return;
  }
  QDialog::accept();
}

void PropertyFormDialog::done(int result) {
  if (EditMode && !objectId_.empty() && EditObjectId == objectId_) EditMode = false;
  QDialog::done(result);
}

// ---- making and opening them ------------------------------------------------------------

PropertyFormDialog* CreatePropertyForm(PropertyForm form, const std::string& id, QWidget* parent) {
  switch (form) {
    case PropertyForm::PointStyle: {
      PointStyle style;
      if (!LoadPointStyleFromSelection(style)) return nullptr;
      int count = 0;
      for (int i = 1; i <= Sel.Points.count(); ++i) count += FindPoint(Sel.Points.Item(i)->ID) != nullptr;
      return new frmPointEdit(parent, style, count);
    }
    case PropertyForm::Point: {
      PointProps p;
      if (!LoadPointProps(id, p)) return nullptr;
      return new frmF16(parent, id, p, FindPoint(id)->ptype);
    }
    case PropertyForm::Line: {
      LineProps p;
      return LoadLineProps(id, p) ? new frmLine(parent, id, p) : nullptr;
    }
    case PropertyForm::Circle: {
      CircleProps p;
      return LoadCircleProps(id, p) ? new frmCircle(parent, id, p) : nullptr;
    }
    case PropertyForm::Arc: {
      ArcProps p;
      return LoadArcProps(id, p) ? new frmArc(parent, id, p) : nullptr;
    }
    case PropertyForm::Region: {
      RegionProps p;
      return LoadRegionProps(id, p) ? new frmRegion(parent, id, p) : nullptr;
    }
    case PropertyForm::Sector:
    case PropertyForm::Ribbon:
    case PropertyForm::Sphere: {
      MeshSurfaceProps p;
      return LoadMeshSurfaceProps(id, p) ? new frmMeshSurface(parent, form, id, p) : nullptr;
    }
    case PropertyForm::InterLine:
    case PropertyForm::Locus: {
      TraceProps p;
      return LoadTraceProps(id, p) ? new frmTrace(parent, form, id, p) : nullptr;
    }
    case PropertyForm::Note: {
      NoteProps p;
      return LoadNoteProps(id, p) ? new frmNote(parent, id, p) : nullptr;
    }
  }
  return nullptr;
}

void InstallPropertyForms(QWidget* mainWindow) {
  // Each window installs its own opener; only the window that installed the
  // current one takes it away again.
  static int installed = 0;
  const int mine = ++installed;
  QPointer<QWidget> window(mainWindow);
  SetPropertyFormOpener([window](PropertyForm form, const std::string& id) {
    if (!window) return;
    PropertyFormDialog* dialog = CreatePropertyForm(form, id, window);
    if (!dialog) {
      EditMode = false;
      host().MsgBox(form == PropertyForm::PointStyle ? kSelectPointFirst : kObjectNotExist,
                    form == PropertyForm::PointStyle ? "Note" : "Error", MsgButtons::OK, MsgIcon::Exclamation);
      return;
    }
    dialog->open();
  });
  QObject::connect(mainWindow, &QObject::destroyed, [mine] {
    if (mine == installed) SetPropertyFormOpener({});
  });
}

}  // namespace vt::app
