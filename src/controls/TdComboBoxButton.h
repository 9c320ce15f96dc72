#pragma once

#include "common/TdCommonExport.h"

#include <QPointer>
#include <QString>
#include <QVariant>
#include <QWidgetAction>

class ComboBoxFace;
class QDataStream;
class QStandardItemModel;

/// A toolbar button that is a combo box. It can stand on several toolbars: its copies show the same entries, the same
/// choice and the same text, and so do all other buttons that have its command.
///
/// When the user chooses or types, `chosen` is emitted and then the host's main window is told the command
/// (CTdHostMessage::Command), where the host has named none the main windows that the button stands in; choices that
/// the program makes are silent unless it asks otherwise. On an upright toolbar the button shows its text running up
/// and drops the entries down beside the bar.
class TDCOMMON_API CTdComboBoxButton : public QWidgetAction
{
    Q_OBJECT

public:
    /// @param commandId what the windows are told when the user has chosen
    /// @param width of the box in pixels; 0 for 150
    explicit CTdComboBoxButton(int commandId = -1, int width = 0, QObject *parent = nullptr);
    ~CTdComboBoxButton() override;

    int GetCommandId() const { return m_commandId; }
    int GetWidth() const { return m_width; }
    /// True when the user may type a text of his own; it counts from Enter or when the box loses the focus, but not by
    /// the end of its window.
    bool IsEditable() const { return m_isEditable; }
    void SetEditable(bool editable);

    /// Adds an entry. @return its place
    int AddItem(const QString &text, const QVariant &data = QVariant());
    /// Takes the entry at @p index away. @return false when there is none
    bool DeleteItem(int index);
    void RemoveAllItems();
    int GetCount() const;
    /// The text of the entry at @p index; empty when there is none.
    QString GetItem(int index) const;
    /// The data of the entry at @p index.
    QVariant GetItemData(int index) const;
    /// The first entry with exactly the text @p text; -1 when there is none.
    int FindItem(const QString &text) const;

    /// The chosen entry; -1 for none, and while a text shows that is no entry.
    int GetCurSel() const { return m_current; }
    /// The text that shows: of the chosen entry, or typed.
    QString GetText() const { return m_text; }
    /// Chooses the entry at @p index; -1 for none. @param notify tell the command as if the user had chosen
    /// @return false, and nothing changes, when there is no such entry
    bool SelectItem(int index, bool notify = false);
    /// Shows @p text: chooses the entry that reads so. @return false, and nothing changes, for a text that is no entry
    /// in a box that cannot be typed into
    bool SetText(const QString &text, bool notify = false);

    /// Takes over width, name, entries, choice and text, but not the command. Tells nobody.
    void CopyFrom(const CTdComboBoxButton &other);
    /// Writes command, width, entries, choice and text. Of the data of the entries only truth values, numbers and texts
    /// are written: other data are the program's.
    void Serialize(QDataStream &stream) const;
    /// Reads what Serialize() wrote, and shows it, in the other buttons with that command too, without telling anybody.
    /// Numbers among the data come back as qint64 or double.
    /// @return false, and nothing changes, when the stream does not hold it
    bool Deserialize(QDataStream &stream);

    /// The first button with the command @p commandId; null when there is none.
    static CTdComboBoxButton *GetByCmd(int commandId);

Q_SIGNALS:
    /// The user has chosen the entry @p index, or typed a text (-1).
    void chosen(int index, const QString &text);

protected:
    QWidget *createWidget(QWidget *parent) override;

private:
    QList<ComboBoxFace *> faces() const;
    QList<CTdComboBoxButton *> sharers();
    void show(int index, const QString &text);
    void choose(int index, const QString &text, bool notify);
    QList<QPointer<QWidget>> listeners();
    void applyWidth(int width);
    void setEntries(const QStandardItemModel &entries, bool editable, int current, const QString &text);
    void followState();

    int m_commandId;
    int m_width;
    bool m_isEditable = false;
    int m_current = -1;
    QString m_text;
    QStandardItemModel *m_entries; // shared by all copies, owned
};
