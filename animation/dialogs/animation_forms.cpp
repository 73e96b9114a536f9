#include "animation/dialogs/animation_forms.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

#include "animation/animation.h"
#include "animation/dialogs/film_dialog.h"
#include "app/frmF1.h"
#include "animation/export.h"
#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "document/numtext.h"
#include "document/undo.h"
#include "expr/text_prep.h"
#include "tools/name_rules.h"
#include "geometry/dialogs/property_forms.h"

namespace vt::app {

namespace {

// Every number field here reads as the other dialogs read theirs (a decimal
// comma is a point); an empty field is no number.
bool ReadNumber(QLineEdit* field, float& out) {
  const std::string text = field->text().trimmed().toStdString();
  return !text.empty() && ReadNumberText(text, out);
}

void BadField(QLineEdit* field) {
  host().MsgBox("Please input a number. ", "Error", MsgButtons::OK, MsgIcon::Critical);
  field->setFocus();
  field->selectAll();
}

QDialogButtonBox* OkCancel(QDialog* d, const QString& okText = QString()) {
  auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, d);
  if (!okText.isEmpty()) box->button(QDialogButtonBox::Ok)->setText(okText);
  QObject::connect(box, &QDialogButtonBox::accepted, d, &QDialog::accept);
  QObject::connect(box, &QDialogButtonBox::rejected, d, &QDialog::reject);
  return box;
}

void KeepAbove(QDialog* d) {
  d->setAttribute(Qt::WA_DeleteOnClose);
  d->setWindowFlag(Qt::WindowStaysOnTopHint);
}

// The time range "From ... To ..." of a track and the player it goes to.
template <class Chooser>
void AddTimeAndPlayerRows(QDialog* d, QFormLayout* form, QLineEdit*& from, QLineEdit*& to, Chooser*& player,
                          const QString& hint) {
  auto* time = new QHBoxLayout;
  from = new QLineEdit("0", d);
  from->setObjectName("txtFrom");
  to = new QLineEdit("1", d);
  to->setObjectName("txtTo");
  time->addWidget(from);
  time->addWidget(new QLabel(QObject::tr("To"), d));
  time->addWidget(to);
  time->addWidget(new QLabel(hint, d));
  form->addRow(QObject::tr("Time Control: From"), time);
  player = new Chooser(d);
  form->addRow(QObject::tr("Player"), player);
}

}  // namespace

// ---- the player chooser -------------------------------------------------------------

class PlayerChooser : public QWidget {
 public:
  explicit PlayerChooser(QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    combo = new QComboBox(this);
    combo->setObjectName("cboPlayer");
    auto* pick = new QPushButton(QObject::tr("Select from the canvas"), this);
    pick->setObjectName("cmdSelectPlayer");
    auto* make = new QPushButton(QObject::tr("New Player"), this);
    make->setObjectName("Command1");
    row->addWidget(combo, 1);
    row->addWidget(pick);
    row->addWidget(make);
    Fill();
    // The selected player, if there is one, is the first choice.
    if (Sel.AniCtrls.count() > 0) Choose(Sel.AniCtrls.Item(1)->ID);
    QObject::connect(pick, &QPushButton::clicked, this, [this] {
      QPointer<PlayerChooser> self(this);
      PlayerPickListener = [self](const std::string& id) {
        if (self) self->Choose(id);
        PlayerPickListener = nullptr;
      };
    });
    QObject::connect(make, &QPushButton::clicked, this, [this] {
      CAniControl* c = NewPlayer();
      PushSnapshot();
      RedrawScene();
      Fill();
      Choose(c->ID);
    });
  }
  ~PlayerChooser() override { PlayerPickListener = nullptr; }

  void Fill() {
    const QString current = combo->currentText();
    combo->clear();
    for (CAniControl* c : Doc.AniCtrls) combo->addItem(QString::fromStdString(c->ID));
    if (!current.isEmpty()) combo->setCurrentText(current);
  }
  void Choose(const std::string& id) {
    Fill();
    combo->setCurrentText(QString::fromStdString(id));
  }
  std::string Id() const { return combo->currentText().toStdString(); }

  QComboBox* combo;
};

// ---- frmAniSetting ----------------------------------------------------------------

frmAniSetting::frmAniSetting(QWidget* parent, const std::string& playerId) : QDialog(parent), id_(playerId) {
  setObjectName("frmAniSetting");
  setWindowTitle(tr("Animation Player Settings"));
  KeepAbove(this);
  auto* form = new QFormLayout;
  txtSteps_ = new QLineEdit(this);
  txtSteps_->setObjectName("txtSteps");
  txtTime_ = new QLineEdit(this);
  txtTime_->setObjectName("txtTime");
  cboMode_ = new QComboBox(this);
  cboMode_->setObjectName("cboMode");
  // Item i is run mode i + 1.
  cboMode_->addItems({tr("Normal"), tr("Reverse Repeat"), tr("Normal Repeat"), tr("Reverse")});
  auto* seconds = new QHBoxLayout;
  seconds->addWidget(txtTime_);
  seconds->addWidget(new QLabel(tr("Seconds"), this));
  form->addRow(tr("Steps"), txtSteps_);
  form->addRow(tr("Time"), seconds);
  form->addRow(tr("Mode"), cboMode_);
  auto* film = new QPushButton(tr("Save As AVI..."), this);
  film->setObjectName("cmdFilm");
  auto* v = new QVBoxLayout(this);
  v->addLayout(form);
  v->addWidget(film);
  v->addWidget(OkCancel(this));
  if (CAniControl* c = Doc.AniCtrls.FindById(id_)) {
    txtSteps_->setText(QString::number(c->Steps));
    txtTime_->setText(QString::fromStdString(SingleToText(static_cast<float>(c->RunTimes) / 1000.0f)));
    cboMode_->setCurrentIndex(std::clamp(c->AniRunMode, 1, 4) - 1);
  }
  connect(film, &QPushButton::clicked, this, [this] {
    if (auto* window = qobject_cast<frmF1*>(parentWidget())) OpenFilmDialog(window, id_);
  });
}

void frmAniSetting::accept() {
  float steps = 0, seconds = 0;
  if (!ReadNumber(txtSteps_, steps) || steps < 1) return BadField(txtSteps_);
  if (!ReadNumber(txtTime_, seconds) || seconds <= 0) return BadField(txtTime_);
  if (ApplyAniSetting(id_, static_cast<int>(steps), seconds, cboMode_->currentIndex() + 1)) {
    PushSnapshot();
    RedrawScene();
  }
  QDialog::accept();
}

// ---- the track dialogs ----------------------------------------------------------------

frmTrack::frmTrack(QWidget* parent, int kind, const std::string& editId) : QDialog(parent), kind_(kind), editId_(editId) {
  static const char* const kNames[] = {"", "frmMoving", "frmRotating", "frmZoom", "frmPathAni", "frmColorAni"};
  static const char* const kCaptions[] = {"", "Translation Animation", "Rotation Animation", "Scaling Animation",
                                          "Dynamic Point Animation", "Coloring Animation"};
  kind_ = std::clamp(kind, 1, 5);
  setObjectName(kNames[kind_]);
  setWindowTitle(tr(kCaptions[kind_]));
  KeepAbove(this);
  auto* form = new QFormLayout;
  lstBound_ = new QListWidget(this);
  lstBound_->setObjectName("lstBound");
  lstBound_->setMaximumHeight(90);
  auto* bind = new QPushButton(tr("Bind"), this);
  bind->setObjectName("cmdBind");
  form->addRow(kind_ == 4 ? tr("Dynamic Point") : tr("Objects"), lstBound_);
  form->addRow(QString(), bind);
  auto field = [&](const char* name, const QString& label, const QString& value) {
    auto* e = new QLineEdit(value, this);
    e->setObjectName(name);
    form->addRow(label, e);
    return e;
  };
  switch (kind_) {
    case 1:
      txtX_ = field("txtX", tr("x"), QString::number(AniDefaultStep));
      txtY_ = field("txtY", tr("y"), "0");
      txtZ_ = field("txtZ", tr("z"), "0");
      break;
    case 2:
      txtPara1_ = field("txtCenter", tr("Center"), QString());
      txtX_ = field("txtAngle", tr("Angle"), "360");
      break;
    case 3:
      txtPara1_ = field("txtCenter", tr("Center"), QString());
      txtX_ = field("txtScale", tr("Scale"), "2");
      form->addRow(QString(), new QLabel(tr("(Zoom In") + " " + tr("0~1; Zoom Out >1)"), this));
      break;
    case 4: txtPara1_ = field("txtPath", tr("Path"), QString()); break;
    case 5:
      cmdFrom_ = new ColorButton(this);
      cmdFrom_->setObjectName("cmdColorFrom");
      cmdTo_ = new ColorButton(this);
      cmdTo_->setObjectName("cmdColorTo");
      cmdTo_->setColor(RGB(255, 0, 0));
      form->addRow(tr("Color From"), cmdFrom_);
      form->addRow(tr("To"), cmdTo_);
      break;
  }
  AddTimeAndPlayerRows(this, form, txtFrom_, txtTo_, player_, QObject::tr("0~1"));
  auto* v = new QVBoxLayout(this);
  v->addLayout(form);
  v->addWidget(OkCancel(this, editId_.empty() ? tr("Create") : tr("OK")));
  connect(bind, &QPushButton::clicked, this, &frmTrack::Bind);
  Bind();
  if (CAnimation* t = FindTrack(editId_)) {
    lstBound_->clear();
    for (const std::string& id : t->Para2) lstBound_->addItem(QString::fromStdString(id));
    if (txtPara1_) txtPara1_->setText(QString::fromStdString(t->Para1));
    if (txtX_) txtX_->setText(QString::fromStdString(SingleToText(t->RangeTo1)));
    if (txtY_) txtY_->setText(QString::fromStdString(SingleToText(t->RangeTo2)));
    if (txtZ_) txtZ_->setText(QString::fromStdString(SingleToText(t->RangeTo3)));
    if (cmdFrom_ && cmdTo_) {
      auto rgb = [](float r, float g, float b) {
        auto c = [](float v) { return static_cast<int>(std::clamp(v, 0.0f, 255.0f)); };
        return RGB(c(r), c(g), c(b));
      };
      cmdFrom_->setColor(rgb(t->RangeFrom1, t->RangeFrom2, t->RangeFrom3));
      cmdTo_->setColor(rgb(t->RangeTo1, t->RangeTo2, t->RangeTo3));
    }
    txtFrom_->setText(QString::fromStdString(SingleToText(t->TimeFrom)));
    txtTo_->setText(QString::fromStdString(SingleToText(t->TimeTo)));
    player_->Choose(t->ACID);
    // A track stays with its player.
    player_->setEnabled(false);
  }
}

frmTrack::~frmTrack() {
  if (!editId_.empty() && EditObjectId == editId_) EditMode = false;
}

void frmTrack::Bind() {
  lstBound_->clear();
  std::string firstPoint, other;
  for (Kind k : {Kind::PT, Kind::LN, Kind::CR, Kind::AR, Kind::RG, Kind::C2}) {
    CollectionBase& set = Sel.Of(k);
    for (int i = 1; i <= set.count(); ++i) {
      const std::string id = set.ItemBase(i)->ID;
      if (kind_ == 4) {
        // The dynamic point is the first selected point; the path the first
        // other object.
        if (k == Kind::PT && firstPoint.empty()) firstPoint = id;
        else if (k != Kind::PT && other.empty()) other = id;
      } else if (k == Kind::PT || k == Kind::LN || k == Kind::CR || k == Kind::RG) {
        lstBound_->addItem(QString::fromStdString(id));
      }
    }
  }
  if (kind_ == 4) {
    if (!firstPoint.empty()) lstBound_->addItem(QString::fromStdString(firstPoint));
    if (!other.empty() && txtPara1_) txtPara1_->setText(QString::fromStdString(other));
  } else if ((kind_ == 2 || kind_ == 3) && txtPara1_ && txtPara1_->text().isEmpty() && Sel.Points.count() > 0) {
    txtPara1_->setText(QString::fromStdString(Sel.Points.Item(Sel.Points.count())->ID));
  }
}

void frmTrack::accept() {
  TrackForm f;
  f.kind = kind_;
  f.playerId = player_->Id();
  for (int i = 0; i < lstBound_->count(); ++i) f.bound.push_back(lstBound_->item(i)->text().toStdString());
  if (txtPara1_) f.para1 = txtPara1_->text().trimmed().toStdString();
  if (txtX_ && !ReadNumber(txtX_, f.x)) return BadField(txtX_);
  if (txtY_ && !ReadNumber(txtY_, f.y)) return BadField(txtY_);
  if (txtZ_ && !ReadNumber(txtZ_, f.z)) return BadField(txtZ_);
  if (cmdFrom_) f.colorFrom = cmdFrom_->color();
  if (cmdTo_) f.colorTo = cmdTo_->color();
  if (!ReadNumber(txtFrom_, f.timeFrom)) return BadField(txtFrom_);
  if (!ReadNumber(txtTo_, f.timeTo)) return BadField(txtTo_);
  if (!ConfirmTrackForm(f, editId_)) return;  // the message has been shown
  EditMode = false;
  QDialog::accept();
}

// ---- frmVar -------------------------------------------------------------------------------

constexpr const char* kOwnPlayer = "(a new player)";

frmVar::frmVar(QWidget* parent, const std::string& editId) : QDialog(parent), editId_(editId) {
  setObjectName("frmVar");
  setWindowTitle(tr("Parameter"));
  KeepAbove(this);
  auto* form = new QFormLayout;
  auto field = [&](const char* name, const QString& label, const QString& value) {
    auto* e = new QLineEdit(value, this);
    e->setObjectName(name);
    form->addRow(label, e);
    return e;
  };
  txtName_ = field("txtName", tr("Name"), QString());
  txtValue_ = field("txtValue", tr("Value"), "1");
  txtMin_ = field("txtMin", tr("Min"), "-10");
  txtMax_ = field("txtMax", tr("Max"), "10");
  txtStep_ = field("txtStep", tr("Step"), "0.1");
  txtDecimal_ = field("txtDecimal", tr("Decimal"), "2");
  AddTimeAndPlayerRows(this, form, txtFrom_, txtTo_, player_, QObject::tr("(0~1)"));
  // A new parameter gets a slider of its own unless a player is chosen.
  if (editId_.empty() && Sel.AniCtrls.count() == 0) {
    player_->combo->insertItem(0, tr(kOwnPlayer));
    player_->combo->setCurrentIndex(0);
  }
  auto* v = new QVBoxLayout(this);
  v->addLayout(form);
  v->addWidget(OkCancel(this, editId_.empty() ? tr("Create") : tr("OK")));
  if (CAnimation* t = FindTrack(editId_)) {
    auto text = [](float v) { return QString::fromStdString(SingleToText(v)); };
    txtName_->setText(QString::fromStdString(t->Para1));
    txtValue_->setText(text(t->RangeTo2));
    txtMin_->setText(text(t->RangeFrom1));
    txtMax_->setText(text(t->RangeTo1));
    txtStep_->setText(text(t->ParamStep()));
    txtDecimal_->setText(QString::number(std::clamp(static_cast<int>(t->RangeFrom2), 0, 15)));
    txtFrom_->setText(text(t->TimeFrom));
    txtTo_->setText(text(t->TimeTo));
    player_->Choose(t->ACID);
    player_->setEnabled(false);
    // The player's own settings (frames, time, mode) stay one click away.
    auto* settings = new QPushButton(tr("Player Settings..."), this);
    settings->setObjectName("cmdPlayerSettings");
    form->addRow(QString(), settings);
    const std::string playerId = t->ACID;
    connect(settings, &QPushButton::clicked, this, [this, playerId] {
      auto* d = new frmAniSetting(parentWidget(), playerId);
      d->show();
      d->raise();
    });
  }
}

frmVar::~frmVar() {
  if (!editId_.empty() && EditObjectId == editId_) EditMode = false;
}

void frmVar::accept() {
  ParameterForm f;
  float decimals = 0;
  const std::pair<QLineEdit*, float*> numbers[] = {{txtValue_, &f.value}, {txtMin_, &f.min},   {txtMax_, &f.max},
                                                   {txtStep_, &f.step},   {txtDecimal_, &decimals},
                                                   {txtFrom_, &f.timeFrom}, {txtTo_, &f.timeTo}};
  for (const auto& [field, out] : numbers)
    if (!ReadNumber(field, *out)) return BadField(field);
  f.name = txtName_->text().toStdString();
  f.decimals = static_cast<int>(decimals);
  if (!editId_.empty()) {
    if (!EditParameter(editId_, f)) return;
    EditMode = false;
    QDialog::accept();
    return;
  }
  std::string playerId = player_->Id();
  if (playerId == kOwnPlayer) {
    // The player is made once the fields are known to be good.
    std::string name = f.name;
    const std::string error = ParameterFieldsError(f);
    if (!CheckParameterName(name)) return;
    if (!error.empty()) return void(host().MsgBox(error, "Note", MsgButtons::OK, MsgIcon::Exclamation));
    playerId = NewPlayer()->ID;
  }
  if (!CreateParameter(playerId, f)) return;
  PushSnapshot();
  RedrawScene();
  QDialog::accept();
}

// ---- frmLocus -----------------------------------------------------------------------------

frmLocus::frmLocus(QWidget* parent) : QDialog(parent) {
  setObjectName("frmLocus");
  setWindowTitle(tr("Add a Locus"));
  KeepAbove(this);
  auto* form = new QFormLayout;
  txtPoint_ = new QLineEdit(this);
  txtPoint_->setObjectName("txtPoint");
  if (Sel.Points.count() > 0) txtPoint_->setText(QString::fromStdString(Sel.Points.Item(1)->ID));
  cmdColor_ = new ColorButton(this);
  cmdColor_->setObjectName("cmdColor");
  cmdColor_->setColor(RGB(255, 0, 0));
  player_ = new PlayerChooser(this);
  form->addRow(tr("Point"), txtPoint_);
  form->addRow(tr("Color"), cmdColor_);
  form->addRow(tr("Player"), player_);
  auto* v = new QVBoxLayout(this);
  v->addLayout(form);
  v->addWidget(OkCancel(this));
}

frmLocus::~frmLocus() = default;

void frmLocus::accept() {
  if (!AddLocus(player_->Id(), txtPoint_->text().trimmed().toStdString(), cmdColor_->color())) return;
  RedrawScene();
  QDialog::accept();
}

// ---- installation -----------------------------------------------------------------------

void InstallAnimationForms(QMainWindow* mainWindow) {
  QPointer<QMainWindow> window(mainWindow);
  RegisterHandler("mnuAniExportFilm", [window] {
    if (auto* w = qobject_cast<frmF1*>(window.data())) OpenFilmDialog(w, "");
  });
  SetAniDialogOpener([window](int kind, const std::string& editId) {
    if (!window) return;
    QDialog* d = nullptr;
    if (kind == 13) d = new frmAniSetting(window, editId);
    else if (kind == 20) d = new frmVar(window, editId);
    else if (kind == 21) d = new frmLocus(window);
    else d = new frmTrack(window, kind, editId);
    d->show();
    d->raise();
  });
}

}  // namespace vt::app
