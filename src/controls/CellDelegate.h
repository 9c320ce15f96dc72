#pragma once

#include "common/IconPlateDelegate.h"
#include "controls/CellEditor.h"

#include <QPersistentModelIndex>

class ReportModel;

/// Edits cells of a report list, one at a time, and does not let go of an entry that is refused: the editor stays open
/// and shows why.
class CellDelegate : public IconPlateDelegate
{
    Q_OBJECT

public:
    explicit CellDelegate(ReportModel *model, QObject *parent);
    ~CellDelegate() override;

    /// The open editor; null when there is none.
    QWidget *editor() const { return m_editor; }
    /// The cell that is edited.
    QModelIndex editedCell() const { return m_editor ? QModelIndex(m_cell) : QModelIndex(); }
    /// Writes the entry of the open editor into its cell. An entry that was not changed is never judged.
    /// @return false when it is refused: the message shows, and the cell keeps its text.
    bool settle();
    /// Shows the message of a refused entry anew: a click takes tips away.
    void showMessage() const;
    /// The editor was closed.
    void forget();

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// What is drawn and measured of a cell's text: the beginning of one that no screen has room for.
    QString displayText(const QVariant &value, const QLocale &locale) const override;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    QString entry() const;
    CellVerdict judge(const CellEditor &settings, const QString &text) const;
    void refuse(const QString &message);
    void withdrawMessage();

    ReportModel *const m_model; // the list's, not owned
    mutable QPointer<QWidget> m_editor;
    mutable QPersistentModelIndex m_cell;
    mutable QString m_begun; // what the editor showed when it was opened or last settled
    bool m_isSettling = false;
};
