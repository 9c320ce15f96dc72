#include "controls/FilePreview.h"

#include "common/TdModule.h"
#include "engine/base/TxNumberText.h"
#include "res/StringId.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QImageReader>
#include <QLabel>
#include <QLocale>
#include <QPointer>
#include <QThreadPool>
#include <QVBoxLayout>

namespace {

constexpr int pictureSide = 180;                             // device-independent pixels
constexpr qint64 greatestPicture = qint64(64) * 1000 * 1000; // pixels that are decoded for a thumbnail
constexpr int mostReaders = 4;                               // of them some may wait for files that do not answer
constexpr int patience = 400;      // milliseconds that a file may take while another is asked for
constexpr int lastPatience = 2000; // the same at the end of the program

using Abandoned = std::shared_ptr<std::atomic_bool>;

/// A file that ends at once when nobody wants it any more.
class AbandonableFile : public QFile
{
public:
    AbandonableFile(const QString &path, const Abandoned &abandoned) : QFile(path), m_abandoned(abandoned) {}

protected:
    qint64 readData(char *data, qint64 size) override { return *m_abandoned ? -1 : QFile::readData(data, size); }

private:
    const Abandoned m_abandoned;
};

/// The picture in @p path made small; null for none, and for one that is too large. Called in the background.
QImage thumbnailOf(const QString &path, int side, const Abandoned &abandoned)
{
    AbandonableFile file(path, abandoned);
    if (*abandoned || !file.open(QIODevice::ReadOnly))
        return {};
    QImageReader reader(&file);
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

/// The threads that look at files. Deliberately never destroyed: that would wait for a file which does not answer.
QThreadPool &readers()
{
    static QThreadPool *const pool = [] {
        auto *made = new QThreadPool;
        made->setMaxThreadCount(mostReaders);
        // Those that are well have the time to finish before what they use is torn down.
        qAddPostRoutine([] {
            readers().clear();
            readers().waitForDone(lastPatience);
        });
        return made;
    }();
    return *pool;
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
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, &FilePreview::read);
}

FilePreview::~FilePreview()
{
    abandon();
}

void FilePreview::showFile(const QString &path)
{
    m_wanted = path;
    if (path.isEmpty()) {
        abandon();
        m_info = CTdFileInfo();
        m_thumbnail = QImage();
        showResult();
    } else if (!isReading()) {
        read();
    } else if (path != m_asked && !m_patience.isActive()) {
        m_patience.start(); // it is its turn when the one before has been looked at
    }
}

void FilePreview::abandon()
{
    m_patience.stop();
    if (m_abandoned)
        *m_abandoned = true;
    m_abandoned = nullptr;
}

void FilePreview::read()
{
    abandon();
    m_asked = m_wanted;
    m_abandoned = std::make_shared<std::atomic_bool>(false);
    m_picture->setText(CTdModule::LoadString(TdStringId::FileDialogReading));
    m_facts->clear();
    const int side = static_cast<int>(pictureSide * devicePixelRatioF());
    readers().start([path = m_asked, side, abandoned = m_abandoned, pane = QPointer<FilePreview>(this)] {
        if (*abandoned)
            return;
        const CTdFileInfo info = CTdFileInfo::Read(path);
        const QImage thumbnail = info.state == CTdFileInfo::NoFile ? QImage() : thumbnailOf(path, side, abandoned);
        QCoreApplication *application = QCoreApplication::instance();
        if (*abandoned || !application)
            return;
        // The pane may be gone: whether it is can be asked on its own thread only.
        QMetaObject::invokeMethod(
            application,
            [info, thumbnail, abandoned, pane] {
                if (pane && !*abandoned)
                    pane->take(info, thumbnail);
            },
            Qt::QueuedConnection);
    });
}

void FilePreview::take(const CTdFileInfo &info, const QImage &thumbnail)
{
    abandon(); // it is done
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
        if (!m_info.driver.isEmpty())
            add(TdStringId::FileDialogDriver, m_info.driver);
        if (m_info.imageSize.isValid())
            add(TdStringId::FileDialogPixels, locale.toString(m_info.imageSize.width()),
                locale.toString(m_info.imageSize.height()));
        if (m_info.datasetCount > 0)
            add(TdStringId::FileDialogDatasets, locale.toString(m_info.datasetCount));
        if (m_info.isWholeExtent && !m_info.extent.IsVoid())
            add(TdStringId::FileDialogExtent, number(m_info.extent.left), number(m_info.extent.bottom),
                number(m_info.extent.right), number(m_info.extent.top));
        if (!m_info.coordSysName.isEmpty())
            add(TdStringId::FileDialogCoordSys, m_info.coordSysName);
        if (m_info.hasSeveralSystems)
            facts << CTdModule::LoadString(TdStringId::FileDialogSystems);
        if (const QString problem = m_info.GetProblem(); !problem.isEmpty() && m_thumbnail.isNull())
            facts << problem;
    }
    m_facts->setText(facts.join(u'\n'));
    setAccessibleDescription(m_facts->text());
}

void FilePreview::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && !isReading())
        showResult();
}
