#pragma once

#include "controls/TdFileInfo.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <atomic>
#include <memory>

class QLabel;

/// The preview pane of the file dialog: a picture as a thumbnail, and what is known of a file.
///
/// Files are looked at in the background, one at a time: while one is being looked at only the last of those asked for
/// meanwhile waits, so that running down a long list costs nothing. It does not wait long: a file that takes its time,
/// on a network that is slow or gone, is given up for the next. Nothing waits for such a file, not the end of the
/// program either.
class TDCOMMON_API FilePreview : public QWidget
{
    Q_OBJECT

public:
    explicit FilePreview(QWidget *parent = nullptr);
    ~FilePreview() override;

    /// Shows the file @p path; empty for none.
    void showFile(const QString &path);
    /// True while the file is being looked at.
    bool isReading() const { return m_abandoned != nullptr; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void read();
    void abandon();
    void take(const CTdFileInfo &info, const QImage &thumbnail);
    void showResult();

    QLabel *m_picture;
    QLabel *m_facts;
    QString m_wanted;                              ///< the file that is to be shown
    QString m_asked;                               ///< the file that is being looked at
    std::shared_ptr<std::atomic_bool> m_abandoned; ///< tells who looks at it to stop; null while nobody does
    QTimer m_patience;                             ///< runs as long as another file has to wait for it
    CTdFileInfo m_info;
    QImage m_thumbnail;
};
