#pragma once

#include "basic/TdBasicExport.h"

#include <QEvent>
#include <QPoint>
#include <QString>

class CTdOleDataNode;
class CTxDataset;
class QMimeData;

/// A message to the host's main window, or from a drop target to its widget, delivered synchronously.
///
/// A QEvent whose type is the message's number. The payload belongs to the sender and dies when the send returns: a
/// receiver copies what it keeps. The receiver writes its answer with setResult(); accept and ignore mean nothing.
class TDBASIC_API CTdHostMessage : public QEvent
{
public:
    /// The numbers of the messages. Do not change the values.
    enum Message : quint16 {
        OutputText = 1124, ///< a line for the output pane: text()
        Drop = 1135,       ///< something was dropped: mime(), position(); the answer is a Qt::DropAction
        DragEnter = 1137,  ///< a drag has come in: as for Drop
        DragOver = 1138,   ///< a drag moves: as for Drop
        WorkspaceClosed = 1151,
        DataSourceCreated = 1156,
        DataSourceOpened = 1158,
        DataSourceClosed = 1160,
        DatasetClosing = 1165,  ///< node() names the dataset
        DatasetClosed = 1166,   ///< node() names the dataset
        DatasetDeleting = 1167, ///< node() names the dataset
        DatasetDeleted = 1168,  ///< node() names the dataset
        ReleaseDataset = 1173,  ///< asks to release dataset(); a non-zero answer says that the host took care of it
        Command = 2025,         ///< a command of a control: number() is the command's identifier
        ContextHelp = 2026      ///< asks for the help topic number()
    };

    explicit CTdHostMessage(Message message);
    /// A message with a line of text.
    CTdHostMessage(Message message, const QString &text);
    /// A message that names workspace items. @p node is not owned.
    CTdHostMessage(Message message, const CTdOleDataNode *node);
    /// A message about a dataset. @p dataset is not owned.
    CTdHostMessage(Message message, CTxDataset *dataset);
    /// A message with a number.
    CTdHostMessage(Message message, qint64 number);
    /// A drag or drop message. @p mime is not owned; @p position is in the widget's coordinates.
    CTdHostMessage(Message message, const QMimeData *mime, const QPoint &position, Qt::DropActions possible);
    ~CTdHostMessage() override;

    CTdHostMessage *clone() const override;

    Message message() const { return static_cast<Message>(type()); }
    const QString &text() const { return m_text; }
    const CTdOleDataNode *node() const { return m_node; }
    CTxDataset *dataset() const { return m_dataset; }
    qint64 number() const { return m_number; }
    const QMimeData *mime() const { return m_mime; }
    QPoint position() const { return m_position; }
    Qt::DropActions possibleActions() const { return m_possible; }

    qint64 result() const { return m_result; }
    void setResult(qint64 result) { m_result = result; }

    /// The message that @p event is, null when it is another event.
    static CTdHostMessage *from(QEvent *event);

protected:
    CTdHostMessage(const CTdHostMessage &) = default;

private:
    QString m_text;
    const CTdOleDataNode *m_node = nullptr; // not owned
    CTxDataset *m_dataset = nullptr;        // not owned
    const QMimeData *m_mime = nullptr;      // not owned
    QPoint m_position;
    Qt::DropActions m_possible;
    qint64 m_number = 0;
    qint64 m_result = 0;
};
