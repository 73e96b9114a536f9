// A teacher restyles what a lesson made, in the running program: a sector, a
// sphere, a locus and a measurement through their property dialogs (double
// click or Edit > Properties), each change one undo step; then the tracks of
// a player are edited in place from their rows.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QtTest>
#include <cmath>
#include <memory>

#include "animation/animation.h"
#include "animation/dialogs/animation_forms.h"
#include "app/canvas.h"
#include "app/frmF1.h"
#include "document/command_table.h"
#include "document/document.h"
#include "document/globals.h"
#include "document/undo.h"
#include "geometry/derived_surfaces.h"
#include "geometry/dialogs/property_forms.h"
#include "geometry/locus.h"
#include "graphs/swept_commands.h"
#include "gui_fixture.h"
#include "persist/docio.h"

using namespace vt;
using vt::app::frmF1;
using vt::app::PropertyFormDialog;

class SessionRestyleTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { xdg_ = guitest::IsolateDesktopFolders(); }
  void init() {
    QVERIFY(guitest::OpenEmptyWindow(window_));
    window_->RunCommand("mnuFileNew3D");
    watcher_.Start(this);
  }
  void cleanup() {
    watcher_.Stop();
    delete window_;
    window_ = nullptr;
    ClearHandlers();
  }

  void aSectorASphereALocusAndAMeasurementAreRestyled();
  void tracksAreEditedInPlaceFromTheirRows();

 private:
  Position* Point(float x, float y, float z) {
    const std::string id = NewObjectId("PT");
    return Doc.Points.Add(id, x, y, z, 1, "", "", 0, id);
  }
  // A double click where a screen item at (pctX, pctY) per cent lies.
  void DoubleClickAtPct(float pctX, float pctY) {
    QWidget* canvas = window_->picDraw();
    const QPoint at(qRound((pctX + 2) / 100 * canvas->width()), qRound((100 - pctY - 1.5f) / 100 * canvas->height()));
    QTest::mouseClick(canvas, Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseDClick(canvas, Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, at);
  }
  static void SelectOnly(std::initializer_list<DocObject*> objs) {
    for (Kind k : kAllKinds)
      for (int i = 1; i <= Doc.Of(k).count(); ++i) DeselectObject(*Doc.Of(k).ItemBase(i));
    for (DocObject* o : objs) SelectObject(*o);
  }
  // Edit > Properties with only `o` selected.
  void OpenProperties(DocObject& o) {
    SelectOnly({&o});
    window_->menuAction("mnuEditProp")->trigger();
  }
  template <class T>
  T* Visible(const char* name) {
    T* d = nullptr;
    QTest::qWaitFor([&] { return (d = window_->findChild<T*>(name)) && d->isVisible(); }, 5000);
    return d;
  }
  // OK, and checks that it took exactly one undo step.
  void OkIsOneStep(QDialog* d) {
    const int undo = UndoCount;
    QPointer<QDialog> alive(d);
    QTest::mouseClick(d->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
    QTRY_VERIFY(!alive || !alive->isVisible());
    QCOMPARE(UndoCount, undo + 1);
  }
  static void Set(QWidget* d, const char* field, const QString& text) { d->findChild<QLineEdit*>(field)->setText(text); }

  std::unique_ptr<QTemporaryDir> xdg_;
  frmF1* window_ = nullptr;
  guitest::MessageWatcher watcher_;
};

void SessionRestyleTest::aSectorASphereALocusAndAMeasurementAreRestyled() {
  // A square and an apex above it make a pyramid sector.
  auto g = std::make_unique<CRegion>();
  g->ID = NewObjectId("RG");
  const float corners[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
  for (const auto& c : corners) g->Points.emplace_back(c[0], c[1], 0.0f);
  CRegion* square = Doc.Regions.Add(std::move(g));
  Position* apex = Point(0, 0, 2);
  const std::string rim = Point(3, 0, 0)->ID;
  SelectOnly({apex, square});
  window_->RunCommand("mnuDraw2Fan");
  QCOMPARE(Doc.Fans.count(), 1);
  const std::string fan = Doc.Fans.Item(1)->ID;
  const float alpha = Doc.Fans.Item(1)->Alpha;

  OpenProperties(*Doc.Fans.Item(1));
  auto* sector = Visible<PropertyFormDialog>("frmSector");
  QVERIFY(sector);
  QCOMPARE(sector->findChild<QLineEdit*>("txtOpacity")->text(), QString("0.3"));
  Set(sector, "txtOpacity", "0,75");  // a decimal comma, as every number field takes
  sector->findChild<QComboBox*>("cboFillStyle")->setCurrentIndex(4);  // the colour ramp
  sector->findChild<QComboBox*>("cboRamp")->setCurrentIndex(1);
  OkIsOneStep(sector);
  const CFan* styled = Doc.Fans.FindById(fan);
  QVERIFY(styled && styled->Alpha == 0.75f && styled->FillStyle == 5 && styled->Ramp.ColorName == "Earth");
  window_->RunCommand("mnuFUndo");
  QVERIFY(Doc.Fans.FindById(fan) && Doc.Fans.FindById(fan)->Alpha == alpha);

  // A sphere about the apex through the rim point: half of it, by its range.
  SphereForm f = NewSphereForm();
  f.centerId = Doc.Points.Item(1)->ID;
  f.pointId = Doc.Points.Item(2)->ID;
  std::string sphere;
  QCOMPARE(ConfirmSphereForm(f, &sphere), SweptConfirm::Done);
  OpenProperties(*Doc.Spheres.FindById(sphere));
  auto* props = Visible<PropertyFormDialog>("frmSphereProps");
  QVERIFY(props);
  Set(props, "txtATo", "3.1416");
  OkIsOneStep(props);
  const CSphere* half = Doc.Spheres.FindById(sphere);
  QVERIFY(half && std::fabs(half->AngleATo - 3.1416f) < 1e-6);
  float lowestY = 0;
  for (const Position& p : half->Mesh) lowestY = std::min(lowestY, p.y - half->Center.y);
  QVERIFY(lowestY > -1e-3);  // the mesh was rebuilt: no corner on the other side
  window_->RunCommand("mnuFUndo");
  QVERIFY(std::fabs(Doc.Spheres.FindById(sphere)->AngleATo - 6.2832f) < 1e-6);

  // A locus of the rim point: colour and visibility.
  CAniControl* player = NewPlayer();
  CLocus* locus = AddLocus(player->ID, rim, RGB(0, 0, 255));
  QVERIFY(locus);
  const std::string lo = locus->ID;
  PushSnapshot();
  OpenProperties(*locus);
  auto* trace = Visible<PropertyFormDialog>("frmLocusProps");
  QVERIFY(trace);
  trace->findChild<vt::app::ColorButton*>("cmdColor")->setColor(RGB(0, 160, 0));
  trace->findChild<QCheckBox*>("chkVisible")->setChecked(false);
  OkIsOneStep(trace);
  QVERIFY(Doc.Locuses.FindById(lo)->ForeColor == RGB(0, 160, 0) && Doc.Locuses.FindById(lo)->Hide);
  window_->RunCommand("mnuFUndo");
  QVERIFY(Doc.Locuses.FindById(lo)->ForeColor == RGB(0, 0, 255) && !Doc.Locuses.FindById(lo)->Hide);

  // The distance of two points, shown with 4 decimals in 14 points after a
  // double click on it; the file keeps that.
  SelectOnly({Doc.Points.Item(1), Doc.Points.Item(2)});
  window_->RunCommand("mnuDis");
  QCOMPARE(Doc.Notes.count(), 1);
  CNote* note = Doc.Notes.Item(1);
  const std::string nt = note->ID;
  QVERIFY(QString::fromStdString(note->Note).endsWith("= 3.61"));
  window_->menuAction("mnuSelect")->trigger();
  DoubleClickAtPct(note->PosX, note->PosY);
  auto* measure = Visible<PropertyFormDialog>("frmNote");
  QVERIFY(measure);
  measure->findChild<QComboBox*>("cboDecimals")->setCurrentText("4");
  measure->findChild<QComboBox*>("cboFontSize")->setCurrentText("14");
  measure->findChild<vt::app::ColorButton*>("cmdColor")->setColor(RGB(200, 0, 0));
  OkIsOneStep(measure);
  note = Doc.Notes.FindById(nt);
  QVERIFY2(QString::fromStdString(note->Note).endsWith("= 3.6056"), note->Note.c_str());
  QVERIFY(note->FontSize == 14 && note->ForeColor == RGB(200, 0, 0));
  OpenUnRe(GetUndoVar());  // as a file would read it back
  note = Doc.Notes.FindById(nt);
  QVERIFY(note->Decim == 4 && note->FontSize == 14 && note->ForeColor == RGB(200, 0, 0));
  window_->RunCommand("mnuFUndo");
  QVERIFY(QString::fromStdString(Doc.Notes.FindById(nt)->Note).endsWith("= 3.61"));
  QVERIFY2(watcher_.messages.isEmpty(), qPrintable(watcher_.messages.join("\n")));
}

void SessionRestyleTest::tracksAreEditedInPlaceFromTheirRows() {
  Position* p = Point(1, 1, 0);
  CAniControl* player = NewPlayer();
  const std::string ac = player->ID;
  TrackForm f;
  f.kind = 5;
  f.playerId = ac;
  f.bound = {p->ID};
  f.colorFrom = RGB(0, 128, 0);
  f.colorTo = RGB(0, 0, 255);
  CAnimation* colour = ConfirmTrackForm(f);
  QVERIFY(colour);
  const std::string colourId = colour->ID;
  CAnimation* param = CreateParameter(ac, "K", 0, 2, 2, 0, 1);
  QVERIFY(param);
  const std::string paramId = param->ID;
  PushSnapshot();
  window_->menuAction("mnuSelect")->trigger();

  // The colour track's row: the dialog shows its colours, and a new time
  // range leaves them as they were.
  DoubleClickAtPct(colour->PosX, colour->PosY);
  auto* track = Visible<QDialog>("frmColorAni");
  QVERIFY(track);
  QCOMPARE(track->findChild<vt::app::ColorButton*>("cmdColorFrom")->color(), RGB(0, 128, 0));
  QCOMPARE(track->findChild<vt::app::ColorButton*>("cmdColorTo")->color(), RGB(0, 0, 255));
  Set(track, "txtTo", "0.5");
  track->accept();
  colour = FindTrack(colourId);
  QVERIFY(colour && colour->TimeTo == 0.5f);
  QVERIFY(colour->RangeFrom2 == 128 && colour->RangeTo3 == 255 && colour->RangeTo1 == 0);
  QCOMPARE(Doc.AniCtrls.FindById(ac)->AniNum(), 2);

  // The parameter's row opens the parameter dialog on it.
  param = FindTrack(paramId);
  DoubleClickAtPct(param->PosX, param->PosY);
  auto* var = Visible<QDialog>("frmVar");
  QVERIFY(var);
  QCOMPARE(var->findChild<QLineEdit*>("txtName")->text(), QString("K"));
  QCOMPARE(var->findChild<QLineEdit*>("txtMax")->text(), QString("2"));
  Set(var, "txtMax", "5");
  Set(var, "txtDecimal", "3");
  const int undo = UndoCount;
  var->accept();
  param = FindTrack(paramId);
  QVERIFY(param && param->RangeTo1 == 5 && param->RangeFrom2 == 3 && param->Para1 == "K");
  QCOMPARE(UndoCount, undo + 1);
  QCOMPARE(Doc.AniCtrls.FindById(ac)->AniNum(), 2);
  window_->RunCommand("mnuFUndo");
  QCOMPARE(FindTrack(paramId)->RangeTo1, 2.0f);
  QVERIFY2(watcher_.messages.isEmpty(), qPrintable(watcher_.messages.join("\n")));
}

QTEST_MAIN(SessionRestyleTest)
#include "session_restyle_test.moc"
