#pragma once

#include "common/TdCommonExport.h"
#include "engine/base/TxColorRef.h"

#include <QPushButton>

#include <optional>

class ColorPopup;

/// A button that shows a colour and opens a drop-down to choose another: the default colours, all others behind "More
/// Colors…", and "No Color" where that is allowed.
class TDCOMMON_API CTdColorButton : public QPushButton
{
    Q_OBJECT
    /// The colour as forms set it; one that is not valid for none.
    Q_PROPERTY(QColor color READ formColor WRITE setFormColor)
    Q_PROPERTY(bool mayBeNone READ MayBeNone WRITE SetMayBeNone)

public:
    explicit CTdColorButton(QWidget *parent = nullptr);
    ~CTdColorButton() override;

    /// The colour; nothing for none. Black at first.
    std::optional<COLORREF> GetColor() const { return m_color; }
    /// Shows @p color, silently; nothing for no colour, also where the user may not choose that.
    void SetColor(std::optional<COLORREF> color);

    /// Whether the user may choose no colour; not at first.
    bool MayBeNone() const { return m_mayBeNone; }
    void SetMayBeNone(bool allowed) { m_mayBeNone = allowed; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user has chosen another colour, or none.
    void colorChosen(std::optional<COLORREF> color);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void open();
    void chooseAmongAll();
    void take(std::optional<COLORREF> color);
    void describe();
    QColor formColor() const { return m_color ? TxColorRef::toQColor(*m_color) : QColor(); }
    void setFormColor(const QColor &color);

    std::optional<COLORREF> m_color = TxColorRef::make(0, 0, 0);
    bool m_mayBeNone = false;
    ColorPopup *m_popup = nullptr; // made when it is opened first
};
