// Output for a worksheet from the start document: the printed page read back
// from a PDF, and a 720p film from the film dialog, and one cancelled.
#include <poppler-document.h>
#include <poppler-page-renderer.h>
#include <poppler-page.h>

#include <QComboBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QStandardPaths>
#include <QStatusBar>

#include "animation/dialogs/film_dialog.h"
#include "animation/player_objects.h"
#include "app/export_picture.h"
#include "app/scene_frames.h"
#include "gui_fixture.h"
#include "render/picture.h"

using namespace vt;

class GuiOutputTest : public QObject {
  Q_OBJECT
 private slots:
  void initTestCase() {
    xdg_ = guitest::IsolateDesktopFolders();
    QVERIFY(guitest::OpenEmptyWindow(window_) && OpenDocumentPath(ProgramPath("Tutorials/T000.vtd")));
  }
  void cleanupTestCase() { delete window_; }

  void thePrintedPageFitsInsideItsMarginsWithoutTheControls();
  void theFilmStartsAtFrameZeroAndACancelledOneLeavesNoFile();

 private:
  std::unique_ptr<QTemporaryDir> xdg_;
  QTemporaryDir dir_;
  app::frmF1* window_ = nullptr;
};

void GuiOutputTest::thePrintedPageFitsInsideItsMarginsWithoutTheControls() {
  const std::string pdf = dir_.filePath("page.pdf").toStdString();
  guitest::WhenModal<QPrintDialog>(this, [&](QPrintDialog* d) {
    d->printer()->setOutputFormat(QPrinter::PdfFormat);
    d->printer()->setOutputFileName(QString::fromStdString(pdf));
    d->done(QDialog::Accepted);
  });
  window_->RunCommand("mnuFilePrint");
  std::unique_ptr<poppler::document> doc(poppler::document::load_from_file(pdf));
  QVERIFY(doc && doc->pages() == 1);
  std::unique_ptr<poppler::page> page(doc->create_page(0));
  QVERIFY(QString::fromStdString(page->text().to_latin1()).contains("K = 1.50"));
  // At 36 dpi a 15 mm margin is 21 pixels: white; the drawing spans the width between.
  const poppler::image img = poppler::page_renderer().render_page(page.get(), 36, 36);
  const int w = img.width(), h = img.height(), m = 19;
  auto ink = [&](int x, int y) {
    const auto* p = reinterpret_cast<const unsigned char*>(img.const_data()) + y * img.bytes_per_row() + x * 4;
    return p[0] < 200 || p[1] < 200 || p[2] < 200;
  };
  int border = 0, left = 0, right = 0, middle = 0;
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x)
      (x < m || y < m || x >= w - m || y >= h - m ? border : x < w / 4 ? left : x >= w * 3 / 4 ? right : middle) += ink(x, y);
  QVERIFY(border == 0 && left > 0 && right > 0);
  // The player's grey panel is in the exported picture, not on the page.
  auto panels = [this](bool controls) {
    Picture p;
    std::string error;
    app::CaptureCanvasPicture(window_, p, error, controls);
    return std::count_if(p.shapes.begin(), p.shapes.end(), [](auto& s) { return s.kind == s.Fill && s.r == 217; });
  };
  QVERIFY(panels(true) > 0 && panels(false) == 0);
}

// The largest difference of 16 x 16 block means: noise averages out, a moved curve does not.
static int Difference(const QByteArray& a, const Image& b) {
  if (a.size() != static_cast<qsizetype>(b.rgb.size())) return 999;
  std::vector<int> sums((b.width / 16 + 1) * (b.height / 16 + 1));
  for (qsizetype i = 0; i < a.size(); ++i) {
    const qsizetype x = i / 3 % b.width, y = i / 3 / b.width;
    sums[y / 16 * (b.width / 16 + 1) + x / 16] += static_cast<unsigned char>(a[i]) - b.rgb[i];
  }
  return std::abs(*std::max_element(sums.begin(), sums.end(), [](int p, int q) { return std::abs(p) < std::abs(q); })) / 768;
}

void GuiOutputTest::theFilmStartsAtFrameZeroAndACancelledOneLeavesNoFile() {
  if (QStandardPaths::findExecutable("ffmpeg").isEmpty()) QSKIP("ffmpeg is not installed");
  CAniControl* player = Doc.AniCtrls.Item(1);
  Image frames[2];  // frames 0 and 20 as the film draws them
  for (int k : {0, 1}) {
    player->Step = static_cast<short>(20 * k);
    player->ShowFrame();
    frames[k] = app::SceneFrames(window_->picDraw(), 1280, 720).Draw();
  }
  auto film = [&](const QString& path, bool cancel) {  // true when the dialog stayed open as it should
    app::OpenFilmDialog(window_, player->ID);
    auto* d = guitest::Shown<app::frmFilm>(window_);
    if (!d) return false;
    d->findChild<QLineEdit*>("txtFile")->setText(path);
    d->findChild<QComboBox*>("cboSize")->setCurrentIndex(1);
    if (cancel) QTimer::singleShot(0, d->findChild<QPushButton*>("cmdCancel"), &QPushButton::click);
    d->findChild<QPushButton*>("cmdExport")->click();
    return d->isVisible() == cancel && d->close();
  };
  const QString avi = dir_.filePath("film.avi"), cancelled = dir_.filePath("cancelled.avi");
  QVERIFY(film(avi, false));
  QCOMPARE(player->Step, short(20));  // back where it was
  QVERIFY(window_->statusBar()->currentMessage().contains(avi));
  QProcess ffmpeg;  // the film's first frame as RGB
  ffmpeg.start("ffmpeg", {"-v", "error", "-i", avi, "-frames:v", "1", "-f", "rawvideo", "-pix_fmt", "rgb24", "-"});
  QVERIFY(ffmpeg.waitForFinished());
  const QByteArray first = ffmpeg.readAllStandardOutput();
  const int zero = Difference(first, frames[0]), twenty = Difference(first, frames[1]);
  QVERIFY2(zero < 12 && twenty > 24, qPrintable(QString("%1 %2").arg(zero).arg(twenty)));
  QVERIFY(film(cancelled, true));
  QVERIFY(!QFile::exists(cancelled) && !QFile::exists(cancelled + ".part"));
}

VT_GUI_TEST_MAIN(GuiOutputTest)
#include "gui_output_test.moc"
