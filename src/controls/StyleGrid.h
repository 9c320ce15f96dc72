#pragma once

#include "controls/TdStyle.h"
#include "engine/symbol/TxGeoStyle.h"

#include <QListView>

/// All styles of one kind as a table of samples, in the colours of a style. Typing goes to a name; arrows, Home, End
/// and the page keys move.
class StyleGrid : public QListView
{
    Q_OBJECT

public:
    explicit StyleGrid(TdStyle::Kind kind, QWidget *parent = nullptr);

    /// Shows the samples in the colours of @p style. Emits nothing.
    void setColorsOf(const CTxGeoStyle &style);
    /// Moves to the entry @p index (see TdStyle), and emits nothing.
    void setCurrentEntry(int index);

    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user has moved to the entry @p index.
    void currentEntryChanged(int index);

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void changeEvent(QEvent *event) override;

private:
    void fitCells();

    const TdStyle::Kind m_kind;
    CTxGeoStyle m_style;
};
