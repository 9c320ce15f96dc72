#pragma once

#include "controls/TdFileInfo.h"

#include <QImage>
#include <QWidget>

class QLabel;

/// The preview pane of the file dialog: a picture as a thumbnail, and what is known of a file.
///
/// Files are looked at in the background, one at a time: while one is being looked at only the last of those asked for
/// meanwhile waits, so that running down a long list costs nothing.
class TDCOMMON_API FilePreview : public QWidget
{
    Q_OBJECT

public:
    explicit FilePreview(QWidget *parent = nullptr);

    /// Shows the file @p path; empty for none.
    void showFile(const QString &path);
    /// True while the file is being looked at.
    bool isReading() const { return m_isReading; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void read();
    void take(const CTdFileInfo &info, const QImage &thumbnail);
    void showResult();

    QLabel *m_picture;
    QLabel *m_facts;
    QString m_wanted; ///< the file that is to be shown
    CTdFileInfo m_info;
    QImage m_thumbnail;
    bool m_isReading = false;
};
