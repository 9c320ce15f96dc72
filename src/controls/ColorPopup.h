#pragma once

#include "engine/base/TxColorRef.h"

#include <QFrame>

#include <optional>

class ColorGrid;
class QPushButton;

/// The drop-down of a colour button: the default colours, "No Color" where that is allowed, and "More Colors…".
class ColorPopup : public QFrame
{
    Q_OBJECT

public:
    explicit ColorPopup(QWidget *owner);

    /// Shows it below @p owner (above where there is no room), the cursor on @p color.
    void open(QWidget *owner, std::optional<COLORREF> color, bool mayBeNone);

Q_SIGNALS:
    /// The user has chosen a colour, or none.
    void chosen(std::optional<COLORREF> color);
    /// The user wants to choose among all colours.
    void moreWanted();

protected:
    void mousePressEvent(QMouseEvent *event) override;

private:
    ColorGrid *m_grid;
    QPushButton *m_none;
    QPushButton *m_more;
};
