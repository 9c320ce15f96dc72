#include "controls/FilePreview.h"

#include "common/TdModule.h"
#include "engine/base/TxNumberText.h"
#include "res/StringId.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QImageReader>
#include <QLabel>
#include <QLocale>
#include <QPointer>
#include <QThreadPool>
#include <QVBoxLayout>

namespace {

constexpr int pictureSide = 180;                             // device-independent pixels
constexpr qint64 greatestPicture = qint64(64) * 1000 * 1000; // pixels that are decoded for a thumbnail

/// The picture in @p path made small; null for none, and for one that is too large. Called in the background.
QImage thumbnailOf(const QString &path, int side)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (!size.isValid() || qint64(size.width()) * size.height() > greatestPicture)
        return {};
    const QSize fitting(side, side);
    // Formats that can decode a smaller picture at once do so here.
    if (size.width() > side || size.height() > side)
        reader.setScaledSize(size.scaled(fitting, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    return reader.read();
}

QString number(double value)
{
    return TxNumberText::general(value, 8);
}

} // namespace

FilePreview::FilePreview(QWidget *parent) : QWidget(parent), m_picture(new QLabel(this)), m_facts(new QLabel(this))
{
    setAccessibleName(CTdModule::LoadString(TdStringId::FileDialogPreview));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 0, 0, 0);
    layout->addWidget(m_picture);
    layout->addWidget(m_facts);
    layout->addStretch(1);
    m_picture->setFixedSize(pictureSide, pictureSide);
    m_picture->setAlignment(Qt::AlignCenter);
    m_picture->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    m_facts->setTextFormat(Qt::PlainText);
    m_facts->setWordWrap(true);
    m_facts->setAlignment(Qt::AlignTop | Qt::AlignLeading);
    m_facts->setFixedWidth(pictureSide);
    m_facts->setTextInteractionFlags(Qt::TextSelectableByMouse);
}

void FilePreview::showFile(const QString &path)
{
    m_wanted = path;
    if (m_isReading)
        return; // it is its turn when the one before has been looked at
    if (path.isEmpty()) {
        m_info = CTdFileInfo();
        m_thumbnail = QImage();
        showResult();
        return;
    }
    read();
}

void FilePreview::read()
{
    m_isReading = true;
    m_picture->setText(CTdModule::LoadString(TdStringId::FileDialogReading));
    m_facts->clear();
    const int side = static_cast<int>(pictureSide * devicePixelRatioF());
    QThreadPool::globalInstance()->start([path = m_wanted, side, pane = QPointer<FilePreview>(this)] {
        const CTdFileInfo info = CTdFileInfo::Read(path);
        const QImage thumbnail = thumbnailOf(path, side);
        // The pane may be gone: whether it is can be asked on its own thread only.
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [info, thumbnail, pane] {
                if (pane)
                    pane->take(info, thumbnail);
            },
            Qt::QueuedConnection);
    });
}

void FilePreview::take(const CTdFileInfo &info, const QImage &thumbnail)
{
    m_isReading = false;
    if (info.path != m_wanted)
        return showFile(m_wanted);
    m_info = info;
    m_thumbnail = thumbnail;
    showResult();
}

void FilePreview::showResult()
{
    m_picture->clear();
    if (!m_thumbnail.isNull()) {
        QPixmap pixmap = QPixmap::fromImage(m_thumbnail);
        pixmap.setDevicePixelRatio(devicePixelRatioF());
        m_picture->setPixmap(pixmap);
    }
    QStringList facts;
    const auto add = [&facts](quint32 text, const auto &...values) {
        facts << CTdModule::LoadString(text).arg(values...);
    };
    const QLocale locale;
    if (!m_wanted.isEmpty()) {
        facts << QDir(m_info.path).dirName();
        if (m_info.size > 0)
            add(TdStringId::FileDialogSize, locale.formattedDataSize(m_info.size));
        if (m_info.modified.isValid())
            add(TdStringId::FileDialogModified, locale.toString(m_info.modified, QLocale::ShortFormat));
        if (!m_info.kind.isEmpty())
            add(TdStringId::FileDialogKind, m_info.kind);
        if (m_info.imageSize.isValid())
            add(TdStringId::FileDialogPixels, locale.toString(m_info.imageSize.width()),
                locale.toString(m_info.imageSize.height()));
        if (m_info.datasetCount > 0)
            add(TdStringId::FileDialogDatasets, locale.toString(m_info.datasetCount));
        if (m_info.isWholeExtent && !m_info.extent.IsVoid())
            add(TdStringId::FileDialogExtent, number(m_info.extent.left), number(m_info.extent.bottom),
                number(m_info.extent.right), number(m_info.extent.top));
        if (const QString problem = m_info.GetProblem(); !problem.isEmpty() && m_thumbnail.isNull())
            facts << problem;
    }
    m_facts->setText(facts.join(u'\n'));
    setAccessibleDescription(m_facts->text());
}

void FilePreview::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && !m_isReading)
        showResult();
}
