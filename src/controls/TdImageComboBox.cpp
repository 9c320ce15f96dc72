#include "controls/TdImageComboBox.h"

#include "common/IconPlateDelegate.h"

#include <QAbstractItemView>

#include <algorithm>

namespace {

constexpr int imageRole = Qt::UserRole + 0x100; // well away from the roles of who uses the box
constexpr int indentRole = imageRole + 1;

/// One level of indent in a list of this font, in pixels.
int levelWidth(const QFontMetrics &metrics)
{
    return metrics.height();
}

/// Draws an entry as far to the right as its indent says (to the left in scripts that run so).
class IndentDelegate : public IconPlateDelegate
{
public:
    using IconPlateDelegate::IconPlateDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const int indent = index.data(indentRole).toInt() * levelWidth(option.fontMetrics);
        if (indent == 0)
            return IconPlateDelegate::paint(painter, option, index);
        // The mark of the chosen entry spans the row, as it does for entries without an indent.
        QStyleOptionViewItem row = option;
        initStyleOption(&row, index);
        row.text.clear();
        row.icon = QIcon();
        row.features &= ~QStyleOptionViewItem::HasDecoration;
        const QWidget *widget = option.widget;
        widget->style()->drawControl(QStyle::CE_ItemViewItem, &row, painter, widget);
        QStyleOptionViewItem content = option;
        content.rect = QStyle::visualRect(option.direction, option.rect, option.rect.adjusted(indent, 0, 0, 0));
        content.state &= ~QStyle::State_MouseOver;
        IconPlateDelegate::paint(painter, content, index);
    }
};

} // namespace

CTdImageComboBox::CTdImageComboBox(QWidget *parent) : CTdAutoWidthComboBox(parent)
{
    setItemDelegate(new IndentDelegate(this));
}

CTdImageComboBox::~CTdImageComboBox() = default;

void CTdImageComboBox::SetImageList(const QList<QIcon> &images)
{
    m_images = images;
    for (int i = 0; i < count(); ++i)
        SetItemImage(i, GetItemImage(i));
}

int CTdImageComboBox::AddItem(const QString &text, int image, int indent, const QVariant &value)
{
    return InsertItem(count(), text, image, indent, value);
}

int CTdImageComboBox::InsertItem(int index, const QString &text, int image, int indent, const QVariant &value)
{
    const int place = index < 0 || index > count() ? count() : index;
    insertItem(place, text, value);
    SetItemImage(place, image);
    SetItemIndent(place, indent);
    return place;
}

int CTdImageComboBox::GetItemImage(int index) const
{
    const QVariant image = itemData(index, imageRole);
    return image.isValid() ? image.toInt() : noImage;
}

void CTdImageComboBox::SetItemImage(int index, int image)
{
    setItemData(index, image, imageRole);
    // A null icon would take up the room of one.
    const QIcon icon = m_images.value(image);
    setItemData(index, icon.isNull() ? QVariant() : QVariant(icon), Qt::DecorationRole);
}

int CTdImageComboBox::GetItemIndent(int index) const
{
    return itemData(index, indentRole).toInt();
}

void CTdImageComboBox::SetItemIndent(int index, int indent)
{
    setItemData(index, std::clamp(indent, 0, greatestIndent), indentRole);
}

int CTdImageComboBox::extraWidth(const QModelIndex &index) const
{
    return index.data(indentRole).toInt() * levelWidth(view()->fontMetrics());
}
