#pragma once

#include <QAccessibleWidget>

#include <vector>

class RibbonWidget;

/// The ribbon as readers of the screen know it: a list whose items are the stops.
class RibbonAccessible : public QAccessibleWidget
{
public:
    explicit RibbonAccessible(RibbonWidget *ribbon);
    ~RibbonAccessible() override;

    /// Makes Qt find this class for every RibbonWidget.
    static void install();
    /// Tells that the selected stop is another (@p isOtherStop), or that it has another value or colour.
    static void announce(RibbonWidget &ribbon, bool isOtherStop);

    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *focusChild() const override;
    QString text(QAccessible::Text text) const override;

private:
    RibbonWidget *ribbon() const;

    mutable std::vector<QAccessible::Id> m_stops; ///< of the items that were asked for; 0 for the others
};
