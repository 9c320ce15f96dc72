#include "controls/TdStyleButton.h"

#include "common/TdModule.h"
#include "controls/SampleButton.h"
#include "controls/TdStyleDialog.h"
#include "res/StringId.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>

CTdStyleButton::CTdStyleButton(QWidget *parent) : CTdStyleButton(TdStyle::Line, parent) {}

CTdStyleButton::CTdStyleButton(TdStyle::Kind kind, QWidget *parent) : QPushButton(parent), m_kind(kind)
{
    setAutoDefault(false);
    describe();
    connect(this, &QPushButton::clicked, this, &CTdStyleButton::chooseStyle);
}

CTdStyleButton::~CTdStyleButton() = default;

void CTdStyleButton::SetKind(TdStyle::Kind kind)
{
    m_kind = kind;
    describe();
    updateGeometry();
    update();
}

void CTdStyleButton::SetStyle(const CTxGeoStyle &style)
{
    m_style = style;
    describe();
    update();
}

void CTdStyleButton::describe()
{
    constexpr quint32 names[] = {TdStringId::StyleLineTitle, TdStringId::StyleFillTitle,
                                 TdStringId::StyleSymbolTitle}; // by kind
    setAccessibleName(CTdModule::LoadString(names[m_kind]));
    setAccessibleDescription(TdStyle::name(m_kind, m_style));
    setToolTip(accessibleDescription());
}

QSize CTdStyleButton::sizeHint() const
{
    const int line = fontMetrics().height();
    return SampleButton::sizeFor(*this, {m_kind == TdStyle::Symbol ? line * 2 : line * 5, line + 6});
}

QSize CTdStyleButton::minimumSizeHint() const
{
    return SampleButton::sizeFor(*this, {fontMetrics().height(), fontMetrics().height()});
}

void CTdStyleButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect place = SampleButton::paintFrame(*this, painter);
    if (!isEnabled())
        painter.setOpacity(0.4);
    TdStyle::drawSample(painter, place, m_kind, m_style);
}

void CTdStyleButton::keyPressEvent(QKeyEvent *event)
{
    if (SampleButton::isOpeningKey(event->key()))
        click();
    else
        QPushButton::keyPressEvent(event);
}

void CTdStyleButton::changeEvent(QEvent *event)
{
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        describe();
}

void CTdStyleButton::chooseStyle()
{
    // On the heap: the window may go while the dialog is open, and takes it along.
    const QPointer<CTdStyleDialog> dialog = new CTdStyleDialog(m_kind, m_style, window());
    const QPointer<CTdStyleButton> alive(this);
    const bool accepted = dialog->DoModal() == CTdDialog::IdOk && dialog;
    const CTxGeoStyle style = accepted ? dialog->GetStyle() : CTxGeoStyle();
    delete dialog;
    if (!alive || !accepted || style == m_style)
        return;
    SetStyle(style);
    Q_EMIT styleChosen(m_style);
}
