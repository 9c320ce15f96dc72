#include "engine/ui/TxComboBoxGradientColors.h"

#include "engine/symbol/TxColorFolder.h"
#include "engine/symbol/TxStockGradient.h"
#include "engine/ui/GradientIcon.h"
#include "engine/ui/TxWheelGuard.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include <algorithm>

/// Text that is typed without longer pauses.
class TypedSearch
{
public:
    /// Adds to the text, which begins anew after a pause.
    void add(const QString &text)
    {
        if (!isGoingOn())
            m_text.clear();
        m_text += text;
        m_sinceLast.start();
    }
    /// Whether the next letter would be added to what is there.
    bool isGoingOn() const
    {
        return m_sinceLast.isValid() && !m_sinceLast.hasExpired(QApplication::keyboardInputInterval());
    }
    void stop() { m_sinceLast.invalidate(); }

    /// The first item from @p current on, and then from the top, whose text begins with what was typed, or else has it;
    /// one letter, typed again and again, goes from item to item. -1 when there is none.
    int find(const QComboBox &list, int current) const
    {
        const bool isOneLetter = m_text.count(m_text.front(), Qt::CaseInsensitive) == m_text.size();
        const QString wanted = isOneLetter ? m_text.left(1) : m_text;
        const int start = std::max(current + (isOneLetter ? 1 : 0), 0);
        for (const bool anywhere : {false, true}) {
            for (int i = 0; i < list.count(); ++i) {
                const int item = (start + i) % list.count();
                const qsizetype at = list.itemText(item).indexOf(wanted, 0, Qt::CaseInsensitive);
                if (anywhere ? at >= 0 : at == 0)
                    return item;
            }
        }
        return -1;
    }

private:
    QString m_text;
    QElapsedTimer m_sinceLast;
};

namespace {

constexpr int customStyle = -1;

/// Rows with air between the pictures. A delegate of its own, because some styles would draw a menu with small
/// pictures.
class RampDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, option.fontMetrics.height() / 3);
    }
};

QString translated(const char *text)
{
    return QCoreApplication::translate("TdCommon", text);
}

/// What a ramp is for and promises, in words.
QString description(qint32 style)
{
    static constexpr const char *kinds[] = {
        QT_TRANSLATE_NOOP("TdCommon", "From little to much"),
        QT_TRANSLATE_NOOP("TdCommon", "To both sides of a middle"),
        QT_TRANSLATE_NOOP("TdCommon", "For directions and phases"),
        QT_TRANSLATE_NOOP("TdCommon", "For heights and depths"),
        QT_TRANSLATE_NOOP("TdCommon", "For a subject"),
    };
    const TxStockGradientTraits traits = TxGetStockGradientTraits(style);
    QStringList parts{translated(kinds[traits.kind])};
    if (traits.hasSeaLevel)
        parts << translated(QT_TRANSLATE_NOOP("TdCommon", "sea level in the middle"));
    if (traits.isUniform)
        parts << translated(QT_TRANSLATE_NOOP("TdCommon", "even steps"));
    if (traits.isColorBlindSafe)
        parts << translated(QT_TRANSLATE_NOOP("TdCommon", "safe for color-blind readers"));
    return parts.join(QStringLiteral(", "));
}

} // namespace

CTxComboBoxGradientColors::CTxComboBoxGradientColors(QWidget *parent)
    : QComboBox(parent), m_search(std::make_unique<TypedSearch>())
{
    TxWheelGuard::install(this);
    setItemDelegate(new RampDelegate(this));
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(18);
    setMaxVisibleItems(18);
    view()->installEventFilter(this);
    fitPictures();
    setTexts();
}

CTxComboBoxGradientColors::~CTxComboBoxGradientColors() = default;

void CTxComboBoxGradientColors::InitContent()
{
    const QSignalBlocker blocker(this);
    clear();
    for (qint32 style = 0; style < CTxColorFolder::GetStockGradientCount(); ++style)
        addItem(txGradientIcon(style), QString(), style);
    addItem(txGradientIcon(customStyle), QString(), customStyle);
    setTexts();
    setCurrentIndex(-1);
}

qint32 CTxComboBoxGradientColors::GetStockGradient() const
{
    return currentIndex() < 0 ? -1 : currentData().toInt();
}

bool CTxComboBoxGradientColors::IsCustom() const
{
    return currentIndex() >= 0 && currentData().toInt() == customStyle;
}

void CTxComboBoxGradientColors::setTexts()
{
    const QSignalBlocker blocker(this);
    setAccessibleName(translated(QT_TRANSLATE_NOOP("TdCommon", "Color ramp")));
    for (int i = 0; i < count(); ++i) {
        const qint32 style = itemData(i).toInt();
        const bool isCustom = style == customStyle;
        const QString about =
            isCustom ? translated(QT_TRANSLATE_NOOP("TdCommon", "A ramp of your own")) : description(style);
        setItemText(i, isCustom ? translated(QT_TRANSLATE_NOOP("TdCommon", "Custom…"))
                                : CTxColorFolder::GetStockGradientName(style));
        setItemData(i, about, Qt::ToolTipRole);
        setItemData(i, about, Qt::AccessibleDescriptionRole);
    }
}

void CTxComboBoxGradientColors::fitPictures()
{
    const int height = fontMetrics().height();
    setIconSize(QSize(height * 8, height));
}

void CTxComboBoxGradientColors::showPopup()
{
    m_search->stop();
    // The list is as wide as its longest name, also where the field is narrow.
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + view()->verticalScrollBar()->sizeHint().width());
    QComboBox::showPopup();
}

std::optional<int> CTxComboBoxGradientColors::typedItem(const QKeyEvent &event, int current)
{
    const QString text = event.text();
    const bool isText = !text.isEmpty() && text.front().isPrint() &&
                        !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (!isText || (text == u' ' && !m_search->isGoingOn())) // the first blank opens or chooses
        return std::nullopt;
    m_search->add(text);
    return m_search->find(*this, current);
}

bool CTxComboBoxGradientColors::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == view() && event->type() == QEvent::KeyPress) {
        if (const auto item = typedItem(*static_cast<QKeyEvent *>(event), view()->currentIndex().row())) {
            if (*item >= 0)
                view()->setCurrentIndex(model()->index(*item, modelColumn(), rootModelIndex()));
            return true;
        }
    }
    return QComboBox::eventFilter(watched, event);
}

void CTxComboBoxGradientColors::keyPressEvent(QKeyEvent *event)
{
    const auto item = typedItem(*event, currentIndex());
    if (!item)
        return QComboBox::keyPressEvent(event);
    if (*item < 0 || *item == currentIndex())
        return;
    setCurrentIndex(*item);
    Q_EMIT activated(*item);
    Q_EMIT textActivated(itemText(*item));
}

void CTxComboBoxGradientColors::changeEvent(QEvent *event)
{
    QComboBox::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        setTexts();
    else if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitPictures();
}
