#include "app/qt_host.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <algorithm>

#include <QApplication>
#include <QClipboard>
#include <QColorDialog>
#include <QDesktopServices>
#include <QFileDialog>
#include <QImage>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QRegularExpression>
#include <QTimer>
#include <QUrl>

#include "app/canvas.h"
#include "document/frame_commands.h"

namespace vt::app {

QString QtFileFilter(const std::string& filter) {
  const QStringList parts = QString::fromStdString(filter).split('|');
  QStringList out;
  for (int i = 0; i + 1 < parts.size(); i += 2) {
    QString description = parts[i].trimmed();
    const QString patterns = QString(parts[i + 1]).replace(';', ' ');
    if (!description.contains('(')) description += " (" + patterns + ")";
    out << description;
  }
  if (out.isEmpty()) out << QString::fromStdString(filter);
  return out.join(";;");
}

QImage ToQImage(const Image& image) {
  if (image.empty()) return QImage();
  QImage img(reinterpret_cast<const uchar*>(image.rgb.data()), image.width, image.height, image.width * 3,
             QImage::Format_RGB888);
  return img.copy();
}

Image FromQImage(const QImage& source) {
  Image out;
  if (source.isNull()) return out;
  const QImage img = source.convertToFormat(QImage::Format_RGB888);
  out.width = img.width();
  out.height = img.height();
  out.rgb.resize(static_cast<size_t>(out.width) * out.height * 3);
  for (int y = 0; y < out.height; ++y)
    std::copy(img.constScanLine(y), img.constScanLine(y) + out.width * 3,
              out.rgb.data() + static_cast<size_t>(y) * out.width * 3);
  return out;
}

QtHost::QtHost(QWidget* window, Canvas* canvas, QWidget* canvasArea)
    : window_(window), canvas_(canvas), canvasArea_(canvasArea) {}

QtHost::~QtHost() {
  for (auto& [id, t] : timers_) delete t;
}

void QtHost::CanvasCurrent() {
  if (canvas_) canvas_->MakeCurrent();
}

MsgResult QtHost::MsgBox(const std::string& text, const std::string& title, MsgButtons buttons, MsgIcon icon) {
  QMessageBox box(window_);
  box.setWindowTitle(QString::fromStdString(title));
  box.setText(QString::fromStdString(text));
  switch (icon) {
    case MsgIcon::None: box.setIcon(QMessageBox::NoIcon); break;
    case MsgIcon::Information: box.setIcon(QMessageBox::Information); break;
    case MsgIcon::Exclamation: box.setIcon(QMessageBox::Warning); break;
    case MsgIcon::Critical: box.setIcon(QMessageBox::Critical); break;
    case MsgIcon::Question: box.setIcon(QMessageBox::Question); break;
  }
  QMessageBox::StandardButtons set;
  QMessageBox::StandardButton escape = QMessageBox::Ok;
  switch (buttons) {
    case MsgButtons::OK: set = QMessageBox::Ok; break;
    case MsgButtons::OKCancel: set = QMessageBox::Ok | QMessageBox::Cancel; escape = QMessageBox::Cancel; break;
    case MsgButtons::YesNo: set = QMessageBox::Yes | QMessageBox::No; escape = QMessageBox::No; break;
    case MsgButtons::YesNoCancel:
      set = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
      escape = QMessageBox::Cancel;
      break;
  }
  box.setStandardButtons(set);
  box.setEscapeButton(escape);
  ++boxesOpen_;
  const int r = box.exec();
  --boxesOpen_;
  CanvasCurrent();
  switch (r) {
    case QMessageBox::Yes: return MsgResult::Yes;
    case QMessageBox::No: return MsgResult::No;
    case QMessageBox::Cancel: return MsgResult::Cancel;
    case QMessageBox::Ok: return MsgResult::OK;
    default:
      // Closed by the window manager: the escape answer.
      return escape == QMessageBox::Ok ? MsgResult::OK
             : escape == QMessageBox::No ? MsgResult::No
                                         : MsgResult::Cancel;
  }
}

std::string QtHost::OpenFileDialog(const std::string& title, const std::string& filter) {
  QFileDialog dlg(window_, QString::fromStdString(title), QString(), QtFileFilter(filter));
  dlg.setAcceptMode(QFileDialog::AcceptOpen);
  dlg.setFileMode(QFileDialog::ExistingFile);
  const bool ok = dlg.exec() == QDialog::Accepted;
  CanvasCurrent();
  if (!ok || dlg.selectedFiles().isEmpty()) return {};
  return dlg.selectedFiles().first().toStdString();
}

std::string QtHost::SaveFileDialog(const std::string& title, const std::string& filter) {
  QFileDialog dlg(window_, QString::fromStdString(title), QString(), QtFileFilter(filter));
  dlg.setAcceptMode(QFileDialog::AcceptSave);
  dlg.setFileMode(QFileDialog::AnyFile);
  // The first pattern's extension is added to a name typed without one.
  const QString qtFilter = QtFileFilter(filter);
  const int star = qtFilter.indexOf("*.");
  if (star >= 0) {
    QString suffix = qtFilter.mid(star + 2);
    suffix = suffix.left(suffix.indexOf(QRegularExpression("[^A-Za-z0-9]")));
    if (!suffix.isEmpty()) dlg.setDefaultSuffix(suffix);
  }
  // A name typed without an extension takes the one of the kind picked.
  QObject::connect(&dlg, &QFileDialog::filterSelected, &dlg, [&dlg](const QString& picked) {
    const int at = picked.indexOf("*.");
    if (at < 0) return;
    QString suffix = picked.mid(at + 2);
    suffix = suffix.left(suffix.indexOf(QRegularExpression("[^A-Za-z0-9]")));
    if (!suffix.isEmpty()) dlg.setDefaultSuffix(suffix);
  });
  const bool ok = dlg.exec() == QDialog::Accepted;
  CanvasCurrent();
  if (!ok || dlg.selectedFiles().isEmpty()) return {};
  return dlg.selectedFiles().first().toStdString();
}

bool QtHost::ColorDialog(std::uint32_t& color) {
  const QColor initial(static_cast<int>(color & 0xFF), static_cast<int>((color >> 8) & 0xFF),
                       static_cast<int>((color >> 16) & 0xFF));
  const QColor c = QColorDialog::getColor(initial, window_);
  CanvasCurrent();
  if (!c.isValid()) return false;
  color = static_cast<std::uint32_t>(c.red()) | (static_cast<std::uint32_t>(c.green()) << 8) |
          (static_cast<std::uint32_t>(c.blue()) << 16);
  return true;
}

// Texts are UTF-8 inside the program; the clipboard carries Unicode text, so
// other programs see the same characters.
void QtHost::SetClipboardText(const std::string& text) {
  QGuiApplication::clipboard()->setText(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

std::string QtHost::ClipboardText() {
  const QByteArray bytes = QGuiApplication::clipboard()->text().toUtf8();
  return std::string(bytes.constData(), static_cast<size_t>(bytes.size()));
}

void QtHost::SetClipboardImage(const Image& image) { QGuiApplication::clipboard()->setImage(ToQImage(image)); }

int QtHost::CreateTimer(int intervalMs, std::function<void()> tick) {
  const int id = nextTimerId_++;
  auto* t = new QTimer();
  t->setInterval(intervalMs);
  QObject::connect(t, &QTimer::timeout, [this, tick = std::move(tick)] {
    // A tick waits while a message box is open (its event loop would run it
    // under the box), and what a tick has to say opens no box.
    if (boxesOpen_ > 0 || !tick) return;
    CanvasCurrent();
    MessageHold quiet;
    RunGuarded(tick);
  });
  timers_[id] = t;
  return id;
}

void QtHost::SetTimerInterval(int id, int intervalMs) {
  auto it = timers_.find(id);
  if (it != timers_.end()) it->second->setInterval(intervalMs);
}

void QtHost::EnableTimer(int id, bool enabled) {
  auto it = timers_.find(id);
  if (it == timers_.end()) return;
  if (enabled) it->second->start();
  else it->second->stop();
}

void QtHost::RemoveTimer(int id) {
  auto it = timers_.find(id);
  if (it == timers_.end()) return;
  it->second->stop();
  it->second->deleteLater();
  timers_.erase(it);
}

bool QtHost::OpenPath(const std::string& pathOrUrl) {
  const QString s = QString::fromStdString(pathOrUrl);
  const QUrl url = s.contains("://") || s.startsWith("mailto:") ? QUrl(s) : QUrl::fromLocalFile(s);
  const bool ok = QDesktopServices::openUrl(url);
  CanvasCurrent();
  return ok;
}

void QtHost::ShowHelp(const std::string& file, const std::string& section) {
  // The help is shown by the program itself, so it works on a machine
  // without a browser; a button hands the page to the browser on request.
  QTextBrowser* browser = nullptr;
  if (!help_) {
    auto* window = new QWidget(window_, Qt::Window);
    window->setObjectName("frmHelp");
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowTitle("Vantrel Help");
    window->resize(760, 640);
    auto* layout = new QVBoxLayout(window);
    browser = new QTextBrowser(window);
    browser->setObjectName("HelpText");
    browser->setOpenExternalLinks(true);
    layout->addWidget(browser);
    auto* buttons = new QHBoxLayout;
    auto* external = new QPushButton("Open in Browser", window);
    auto* close = new QPushButton("Close", window);
    buttons->addStretch();
    buttons->addWidget(external);
    buttons->addWidget(close);
    layout->addLayout(buttons);
    QObject::connect(close, &QPushButton::clicked, window, &QWidget::close);
    QObject::connect(external, &QPushButton::clicked, browser,
                     [browser] { QDesktopServices::openUrl(browser->source()); });
    help_ = window;
  } else {
    browser = help_->findChild<QTextBrowser*>("HelpText");
  }
  QUrl url = QUrl::fromLocalFile(QString::fromStdString(file));
  if (!section.empty()) url.setFragment(QString::fromStdString(section));
  browser->setSource(url);
  if (!section.empty()) browser->scrollToAnchor(QString::fromStdString(section));
  help_->show();
  help_->raise();
  help_->activateWindow();
}

void QtHost::CanvasSize(int& width, int& height) {
  width = height = 1;
  if (canvas_) {
    width = canvas_->DeviceWidth();
    height = canvas_->DeviceHeight();
  } else if (canvasArea_) {
    const qreal scale = canvasArea_->devicePixelRatioF();
    width = std::max(1, static_cast<int>(canvasArea_->width() * scale + 0.5));
    height = std::max(1, static_cast<int>(canvasArea_->height() * scale + 0.5));
  }
}

Image QtHost::CaptureCanvas() {
  if (!canvas_) return canvasArea_ ? FromQImage(canvasArea_->grab().toImage()) : Image();
  const QImage frame = canvas_->grabFramebuffer();
  CanvasCurrent();
  return FromQImage(frame);
}

void QtHost::SwapBuffers() {
  if (canvas_) canvas_->FrameDone();
}

void QtHost::ProcessEvents() {
  QCoreApplication::processEvents();
  CanvasCurrent();
}

}  // namespace vt::app
