#include "colour/RibbonAccessible.h"

#include "colour/RibbonGeometry.h"
#include "colour/RibbonWidget.h"

#include <QPointer>

namespace {

/// One stop of the ribbon. Its only action selects it.
class StopAccessible : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    StopAccessible(RibbonWidget *ribbon, int index) : m_ribbon(ribbon), m_index(index) {}

    int index() const { return m_index; }
    bool isValid() const override { return m_ribbon && m_ribbon->ribbon() && m_index < m_ribbon->ribbon()->count(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return parent() ? parent()->window() : nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(m_ribbon.data()); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }

    QString text(QAccessible::Text text) const override
    {
        return text == QAccessible::Name && isValid() ? m_ribbon->stopName(m_index) : QString();
    }
    void setText(QAccessible::Text, const QString &) override {}

    QRect rect() const override
    {
        if (!isValid())
            return {};
        const qint32 position = m_ribbon->ribbon()->stops()[static_cast<size_t>(m_index)].position;
        const QRect marker = m_ribbon->ribbonGeometry().marker(position).boundingRect();
        return {m_ribbon->mapToGlobal(marker.topLeft()), marker.size()};
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invalid = !isValid();
        if (state.invalid)
            return state;
        state.selectable = true;
        state.focusable = true;
        state.selected = m_ribbon->ribbon()->selected() == m_index;
        state.focused = state.selected && m_ribbon->hasFocus();
        return state;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
    }
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString &name) override
    {
        if (name == pressAction() && isValid())
            m_ribbon->select(m_index);
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    const QPointer<RibbonWidget> m_ribbon;
    const int m_index;
};

QAccessibleInterface *makeRibbon(const QString &, QObject *object)
{
    auto *ribbon = qobject_cast<RibbonWidget *>(object);
    return ribbon ? new RibbonAccessible(ribbon) : nullptr;
}

} // namespace

RibbonAccessible::RibbonAccessible(RibbonWidget *ribbon) : QAccessibleWidget(ribbon, QAccessible::List) {}

RibbonAccessible::~RibbonAccessible()
{
    for (const QAccessible::Id id : m_stops) {
        if (id != 0)
            QAccessible::deleteAccessibleInterface(id);
    }
}

void RibbonAccessible::install()
{
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(makeRibbon);
        return true;
    }();
}

void RibbonAccessible::announce(RibbonWidget &ribbon, bool isOtherStop)
{
    if (!QAccessible::isActive() || !ribbon.ribbon() || ribbon.ribbon()->selected() < 0)
        return;
    const bool isFocus = isOtherStop && ribbon.hasFocus();
    QAccessibleEvent event(&ribbon, isFocus       ? QAccessible::Focus
                                    : isOtherStop ? QAccessible::Selection
                                                  : QAccessible::NameChanged);
    event.setChild(ribbon.ribbon()->selected());
    QAccessible::updateAccessibility(&event);
}

RibbonWidget *RibbonAccessible::ribbon() const
{
    return static_cast<RibbonWidget *>(object());
}

int RibbonAccessible::childCount() const
{
    return ribbon()->ribbon() ? ribbon()->ribbon()->count() : 0;
}

QAccessibleInterface *RibbonAccessible::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    const auto place = static_cast<size_t>(index);
    if (place >= m_stops.size())
        m_stops.resize(place + 1, 0);
    if (m_stops[place] == 0)
        m_stops[place] = QAccessible::registerAccessibleInterface(new StopAccessible(ribbon(), index));
    return QAccessible::accessibleInterface(m_stops[place]);
}

QAccessibleInterface *RibbonAccessible::childAt(int x, int y) const
{
    if (!ribbon()->ribbon())
        return nullptr;
    const QPoint point = ribbon()->mapFromGlobal(QPoint(x, y));
    return child(ribbon()->ribbonGeometry().stopAt(point, ribbon()->ribbon()->stops()));
}

int RibbonAccessible::indexOfChild(const QAccessibleInterface *child) const
{
    const auto *stop = dynamic_cast<const StopAccessible *>(child);
    return stop ? stop->index() : -1;
}

QAccessibleInterface *RibbonAccessible::focusChild() const
{
    return ribbon()->ribbon() && ribbon()->hasFocus() ? child(ribbon()->ribbon()->selected()) : nullptr;
}

QString RibbonAccessible::text(QAccessible::Text text) const
{
    if (text == QAccessible::Value && ribbon()->ribbon())
        return ribbon()->stopName(ribbon()->ribbon()->selected());
    return QAccessibleWidget::text(text);
}
