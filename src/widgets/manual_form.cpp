#include "widgets/manual_form.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QImage>
#include <QPushButton>
#include <QShortcut>
#include <QTextDocument>
#include <QVBoxLayout>
#include <algorithm>

#include "widgets/qt_text.h"

namespace orin::widgets {

namespace {

/// Pictures are never wider than the page.
class PageBrowser final : public QTextBrowser {
 public:
  using QTextBrowser::QTextBrowser;

 protected:
  QVariant loadResource(int type, const QUrl& name) override {
    if (type != QTextDocument::ImageResource) return QTextBrowser::loadResource(type, name);
    const QImage picture(source().resolved(name).toLocalFile());
    const int margins = static_cast<int>(document()->documentMargin() * 2);
    const int widest = std::max(viewport()->width() - margins, fontMetrics().height() * 10);
    if (picture.width() <= widest) return picture;
    return picture.scaledToWidth(widest, Qt::SmoothTransformation);
  }
};

}  // namespace

std::filesystem::path SharedDirectory() {
  return PathFrom(QCoreApplication::applicationDirPath()) / "../share/orin";
}

void OpenManualWithF1(QDialog* dialog) {
  auto* shortcut = new QShortcut(QKeySequence(QKeySequence::HelpContents), dialog);
  QObject::connect(shortcut, &QShortcut::activated, dialog, [dialog] {
    auto* manual = new manual_Form;
    manual->setParent(dialog, Qt::Window);
    manual->setAttribute(Qt::WA_DeleteOnClose);
    manual->resize(dialog->size());
    manual->show();
    manual->ShowPage(dialog->property("helpPage").toString());
  });
}

manual_Form::manual_Form() : browser_(new PageBrowser(this)) {
  setWindowTitle(QStringLiteral("使い方"));
  setProperty("helpPage", QStringLiteral("index"));
  browser_->setOpenLinks(false);
  browser_->setAccessibleName(QStringLiteral("使い方"));
  browser_->document()->setDocumentMargin(fontMetrics().height());
  auto* contents = new QPushButton(QStringLiteral("目次(&I)"), this);
  auto* back = new QPushButton(QStringLiteral("戻る(&B)"), this);
  back->setEnabled(false);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(contents);
  buttons->addWidget(back);
  buttons->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(buttons);
  layout->addWidget(browser_);
  connect(contents, &QPushButton::clicked, this, [this] { ShowPage(QStringLiteral("index")); });
  connect(back, &QPushButton::clicked, browser_, &QTextBrowser::backward);
  connect(browser_, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
  connect(browser_, &QTextBrowser::anchorClicked, this, &manual_Form::Open);
  setFocusProxy(browser_);
}

void manual_Form::ShowPage(const QString& page) {
  const std::filesystem::path directory = SharedDirectory() / "manual";
  QString file = PathOf(directory / (Utf8(page) + ".md"));
  if (!QFile::exists(file)) file = PathOf(directory / "index.md");
  if (!QFile::exists(file)) {
    browser_->setPlainText(PathOf(directory) + QStringLiteral(" に使い方のページがありません。"));
    return;
  }
  browser_->setSource(QUrl::fromLocalFile(QFileInfo(file).canonicalFilePath()),
                      QTextDocument::MarkdownResource);
}

void manual_Form::Open(const QUrl& link) {
  const QUrl target = browser_->source().resolved(link);
  if (!target.isLocalFile()) {
    QDesktopServices::openUrl(target);
  } else if (QFile::exists(target.toLocalFile())) {
    browser_->setSource(target, QTextDocument::MarkdownResource);
  }
}

}  // namespace orin::widgets
