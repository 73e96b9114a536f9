// The triangle tool and the angle note in the real window: three clicks, one
// on a point already there; the right button drops a triangle in the making;
// Undo gives the labels back; an angle note shows degrees and its arc.
#include "document/undo.h"
#include "gui_fixture.h"
#include "tools/note_object.h"
#include "tools/note_properties.h"

using namespace vt;

class TriangleTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { xdg_ = guitest::IsolateDesktopFolders(); }
  void init() { QVERIFY(guitest::OpenEmptyWindow(window_)); }
  void cleanup() {
    delete window_;
    window_ = nullptr;
  }

  void threeClicksMakeATriangleAndUndoGivesItsLabelsBack() {
    guitest::FreePoint(4, -2, 0, true);  // A
    PushSnapshot();
    QWidget* canvas = window_->picDraw();
    window_->RunCommand("mnuDraw2Tri");
    // A triangle in the making follows the mouse and goes with the right button.
    guitest::Click(canvas, PixelOf(-6, 4));
    guitest::Click(canvas, PixelOf(6, 4));
    QTest::mouseMove(canvas, PixelOf(0, -5));
    QCOMPARE(Doc.Lines.count(), 3);
    QTest::mouseClick(canvas, Qt::RightButton, Qt::NoModifier, PixelOf(0, -5));
    QCOMPARE(Doc.Points.count(), 1);
    QCOMPARE(Doc.Lines.count(), 0);

    for (const QPoint& at : {PixelOf(-4, -2), PixelOf(4, -2), PixelOf(0, 3)}) guitest::Click(canvas, at);
    QCOMPARE(Doc.Points.count(), 3);  // the click on A took A
    QStringList sides;
    for (CLine* l : Doc.Lines) {
      QVERIFY(FindPoint(l->pBegin.ID) && FindPoint(l->pEnd.ID));
      sides << QString::fromStdString(l->LLabel);
    }
    QCOMPARE(sides, QStringList({"BA", "AC", "CB"}));
    QCOMPARE(FindPoint(Doc.Points.Item(1)->ID)->LinkNum(), 2);

    window_->RunCommand("mnuFUndo");
    QCOMPARE(Doc.Points.count(), 1);
    QCOMPARE(Doc.Lines.count(), 0);
    window_->RunCommand("mnuDrawP");
    guitest::Click(canvas, PixelOf(-3, 5));
    QCOMPARE(QString::fromStdString(Doc.Points.Item(2)->PLabel), QString("B"));
  }

  void anAngleNoteShowsDegreesAndItsMark() {
    Position* arm = guitest::FreePoint(5, 1, 0, true);
    Position* vertex = guitest::FreePoint(1, 1, 0, true);
    Position* other = guitest::FreePoint(4, 4, 0, true);
    guitest::SelectOnly({arm, vertex, other});
    window_->RunCommand("mnuAngle");
    QCOMPARE(Doc.Notes.count(), 1);
    CNote* note = Doc.Notes.Item(1);
    QCOMPARE(QString::fromStdString(note->Note), QString::fromUtf8("angle ABC = 45.00\u00B0"));
    QVERIFY(note->AngleMark);

    // The arc crosses the bisector 24 pixels out from the vertex.
    const int withMark = DarkNearArc(vertex);
    NoteProps p;
    QVERIFY(LoadNoteProps(note->ID, p));
    p.angleMark = false;
    QCOMPARE(QString::fromStdString(ApplyNoteProps(note->ID, p)), QString());
    QVERIFY2(withMark >= 3 && DarkNearArc(vertex) == 0, qPrintable(QString::number(withMark)));
  }

 private:
  QPoint PixelOf(float x, float y) { return guitest::PixelOf(window_, x, y); }
  int DarkNearArc(const Position* vertex) {
    float X = 0, Y = 0;
    window_->picDraw()->MakeCurrent();
    RedrawScene();
    if (!SceneToScreen(vertex->x, vertex->y, 0, X, Y)) return -1;
    const QImage img = window_->picDraw()->grabFramebuffer();
    const double t = -22.5 * 3.14159265 / 180;  // Y grows downwards
    const int cx = qRound(X + 24 * std::cos(t)), cy = qRound(Y + 24 * std::sin(t));
    int dark = 0;
    for (int y = cy - 4; y <= cy + 4; ++y)
      for (int x = cx - 4; x <= cx + 4; ++x) dark += qGray(img.pixel(x, y)) < 160;
    return dark;
  }

  std::unique_ptr<QTemporaryDir> xdg_;
  app::frmF1* window_ = nullptr;
};

VT_GUI_TEST_MAIN(TriangleTest)
#include "gui_triangle_test.moc"
