#include "ControlPages.h"

#include "common/TdCommMethods.h"
#include "controls/HListBox.h"
#include "controls/ListCtrlEx.h"
#include "controls/TdDragListCtrl.h"
#include "controls/TdHeaderCtrl.h"
#include "engine/data/ElemDatasetInfo.h"
#include "engine/data/TxFieldInfo.h"
#include "workspace/WkspImageList.h"

#include <QIntValidator>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

struct Dataset
{
    const char *name;
    CElemDatasetInfo::Type type;
};

/// What a map of a country is made of, as it is drawn from the top.
constexpr Dataset datasets[] = {{QT_TRANSLATE_NOOP("ControlPages", "Place names"), CElemDatasetInfo::Text},
                                {QT_TRANSLATE_NOOP("ControlPages", "Towns"), CElemDatasetInfo::Point},
                                {QT_TRANSLATE_NOOP("ControlPages", "Bus routes"), CElemDatasetInfo::Route},
                                {QT_TRANSLATE_NOOP("ControlPages", "Roads"), CElemDatasetInfo::Network},
                                {QT_TRANSLATE_NOOP("ControlPages", "Rivers"), CElemDatasetInfo::Line},
                                {QT_TRANSLATE_NOOP("ControlPages", "Districts"), CElemDatasetInfo::Region},
                                {QT_TRANSLATE_NOOP("ControlPages", "Heights"), CElemDatasetInfo::DEM}};

QIcon iconOf(const CTdWkspImageList &images, CElemDatasetInfo::Type type)
{
    return images.icon(images.GetImageIndex(type, 0));
}

/// The first few of @p names, with dots when there are more.
QString fewOf(const QStringList &names)
{
    constexpr qsizetype few = 3;
    return names.mid(0, few).join(u", "_s) + (names.size() > few ? u", …"_s : QString());
}

/// A page with @p control above a row of @p buttons.
QWidget *pageWith(QWidget *control, std::initializer_list<QPushButton *> buttons, QWidget *parent)
{
    auto *page = new QWidget(parent);
    auto *row = new QHBoxLayout;
    for (QPushButton *button : buttons) {
        button->setAutoDefault(false); // Enter belongs to the control
        row->addWidget(button);
    }
    row->addStretch();
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(control, 1);
    layout->addLayout(row);
    return page;
}

/// The fields of a dataset, as who makes one enters them.
class FieldList : public CListCtrlEx
{
public:
    enum Column { Name, Type, Length, Required };

    FieldList();
    void addField();
    void removeFields();

protected:
    /// Texts have a length that may be chosen; other types have their own.
    bool CanEdit(int row, int column) const override { return column != Length || typeOf(row) == CTxFieldInfo::Text; }

private:
    qint16 typeOf(int row) const { return CTdCommMethods::GetFieldTypeFromName(GetItemText(row, Type)); }
    CellVerdict judgeName(int row, const QString &text) const;
    CellVerdict judgeLength(const QString &text) const;
    void setLengthOf(int row);
    bool hasField(const QString &name, int besides) const;

    QIntValidator *m_lengths = new QIntValidator(1, 255, this);
};

FieldList::FieldList()
{
    struct ColumnRow
    {
        const char *title;
        int width;
        CellEditor::Kind kind;
        Qt::Alignment alignment = Qt::AlignLeft;
    };
    constexpr ColumnRow columns[] = {
        {QT_TRANSLATE_NOOP("ControlPages", "Name"), 120, CellEditor::Text},
        {QT_TRANSLATE_NOOP("ControlPages", "Type"), 100, CellEditor::Choice},
        {QT_TRANSLATE_NOOP("ControlPages", "Length"), 90, CellEditor::Text, Qt::AlignRight},
        {QT_TRANSLATE_NOOP("ControlPages", "Required"), 90, CellEditor::Check},
    };
    QStringList types;
    for (const qint16 type : {CTxFieldInfo::Boolean, CTxFieldInfo::Long, CTxFieldInfo::Double, CTxFieldInfo::Text,
                              CTxFieldInfo::Date, CTxFieldInfo::Memo})
        types += CTdCommMethods::GetFieldNameFromType(type);
    for (const ColumnRow &column : columns) {
        const int place = InsertColumn(-1, ControlPages::text(column.title), column.width, column.alignment);
        SetColumnEditor(place, column.kind, types);
    }
    SetColumnValidator(Name, [this](int row, const QString &text) { return judgeName(row, text); });
    SetColumnValidator(Length, m_lengths);
    SetColumnValidator(Length, [this](int, const QString &text) { return judgeLength(text); });
    SetHeaderCheck(Required, true);

    struct FieldRow
    {
        const char *name;
        qint16 type;
        bool isRequired;
    };
    constexpr FieldRow fields[] = {{"Code", CTxFieldInfo::Long, true},        {"Name", CTxFieldInfo::Text, true},
                                   {"Population", CTxFieldInfo::Long, false}, {"Area", CTxFieldInfo::Double, false},
                                   {"Founded", CTxFieldInfo::Date, false},    {"Capital", CTxFieldInfo::Boolean, false},
                                   {"Remarks", CTxFieldInfo::Memo, false}};
    for (const FieldRow &field : fields) {
        const int row = InsertItem(-1, QLatin1StringView(field.name));
        SetItemText(row, Type, CTdCommMethods::GetFieldNameFromType(field.type));
        setLengthOf(row);
        SetCheck(row, Required, field.isRequired);
    }
    SetCurItem(0);
    connect(this, &CTdListCtrl::cellEdited, this, [this](int row, int column) {
        if (column == Type)
            setLengthOf(row);
    });
}

void FieldList::setLengthOf(int row)
{
    SetItemText(row, Length, QString::number(CTdCommMethods::GetFieldDefaultLength(typeOf(row))));
}

bool FieldList::hasField(const QString &name, int besides) const
{
    for (int row = 0; row < GetItemCount(); ++row) {
        if (row != besides && GetItemText(row, Name).compare(name, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

CellVerdict FieldList::judgeName(int row, const QString &text) const
{
    const QString name = text.trimmed();
    if (name.isEmpty())
        return CellVerdict::Refuse(ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "A field needs a name.")));
    if (hasField(name, row))
        return CellVerdict::Refuse(
            ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "There is a field %1 already.")).arg(name));
    return CellVerdict::Accept(name);
}

CellVerdict FieldList::judgeLength(const QString &text) const
{
    const int length = text.toInt();
    if (length >= m_lengths->bottom() && length <= m_lengths->top())
        return CellVerdict::Accept(QString::number(length));
    return CellVerdict::Refuse(ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "A text has a length of %1 to %2."))
                                   .arg(m_lengths->bottom())
                                   .arg(m_lengths->top()));
}

void FieldList::addField()
{
    if (!EndEdit())
        return setFocus(); // to the entry that was refused
    int number = 1;
    while (hasField(u"Field%1"_s.arg(number), -1))
        ++number;
    const int row = InsertItem(GetCurItem() + 1, u"Field%1"_s.arg(number));
    SetItemText(row, Type, CTdCommMethods::GetFieldNameFromType(CTxFieldInfo::Text));
    setLengthOf(row);
    EditItem(row, Name);
}

void FieldList::removeFields()
{
    CancelEdit();
    const QList<int> rows = GetSelItems();
    DeleteItems(rows);
    if (GetItemCount() > 0)
        SetCurItem(std::min(rows.value(0), GetItemCount() - 1));
}

} // namespace

QWidget *ControlPages::makeSelectionList(QWidget *parent, const ShowValue &show)
{
    auto *list = new CHListBox;
    list->setIconSize(QSize(16, 16));
    list->setAccessibleName(text(QT_TRANSLATE_NOOP("ControlPages", "Datasets")));
    CTdWkspImageList images;
    images.InitImageList(1);
    for (const Dataset &dataset : datasets)
        list->addItem(new QListWidgetItem(iconOf(images, dataset.type), text(dataset.name)));
    auto *closed = new QListWidgetItem(iconOf(images, CElemDatasetInfo::CAD),
                                       text(QT_TRANSLATE_NOOP("ControlPages", "Site plan (in use, not to be chosen)")));
    closed->setFlags(Qt::NoItemFlags);
    list->addItem(closed);
    list->setCurrentRow(0);

    auto *all = new QPushButton(text(QT_TRANSLATE_NOOP("ControlPages", "Select &all")));
    auto *others = new QPushButton(text(QT_TRANSLATE_NOOP("ControlPages", "&Reverse")));
    QObject::connect(all, &QPushButton::clicked, list, &CHListBox::SelectAllItems);
    QObject::connect(others, &QPushButton::clicked, list, &CHListBox::ReverseSelect);
    const auto tell = [list, show] {
        const QList<int> rows = list->GetSelItems();
        if (rows.isEmpty())
            return show(ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "nothing selected")));
        QStringList names;
        for (const int row : rows)
            names += list->item(row)->text();
        show(ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "%1 of %2: %3"))
                 .arg(rows.size())
                 .arg(list->count())
                 .arg(fewOf(names)));
    };
    QObject::connect(list, &QListWidget::itemSelectionChanged, list, tell);
    tell();
    return pageWith(list, {all, others}, parent);
}

QWidget *ControlPages::makeReportList(QWidget *parent, const ShowValue &show)
{
    auto *list = new FieldList;
    list->setAccessibleName(text(QT_TRANSLATE_NOOP("ControlPages", "Fields")));
    auto *add = new QPushButton(text(QT_TRANSLATE_NOOP("ControlPages", "A&dd field")));
    auto *remove = new QPushButton(text(QT_TRANSLATE_NOOP("ControlPages", "Re&move fields")));
    QObject::connect(add, &QPushButton::clicked, list, &FieldList::addField);
    QObject::connect(remove, &QPushButton::clicked, list, &FieldList::removeFields);

    auto *hint = new QLabel(text(QT_TRANSLATE_NOOP("ControlPages", "No fields yet: the button below adds one.")));
    hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    hint->setForegroundRole(QPalette::PlaceholderText);
    hint->setWordWrap(true);
    hint->setAlignment(Qt::AlignCenter);
    (new QVBoxLayout(list->viewport()))->addWidget(hint);

    const auto tell = [list, hint, remove, add, show] {
        const int count = list->GetItemCount();
        int required = 0;
        for (int row = 0; row < count; ++row)
            required += list->GetCheck(row, FieldList::Required) ? 1 : 0;
        const int sorted = list->GetHeaderCtrl()->GetSortSection();
        QStringList words{
            ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "%1 fields, %2 required")).arg(count).arg(required)};
        if (sorted >= 0)
            words +=
                ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "sorted by %1")).arg(list->GetColumnTitle(sorted));
        show(words.join(u" · "_s));
        hint->setVisible(count == 0);
        if (count == 0 && remove->hasFocus())
            add->setFocus();
        remove->setEnabled(list->GetSelCount() > 0);
    };
    QObject::connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, list, tell);
    const QAbstractItemModel *rows = list->model();
    QObject::connect(rows, &QAbstractItemModel::dataChanged, list, tell);
    QObject::connect(rows, &QAbstractItemModel::rowsInserted, list, tell);
    QObject::connect(rows, &QAbstractItemModel::rowsRemoved, list, tell);
    QObject::connect(rows, &QAbstractItemModel::layoutChanged, list, tell);
    tell();
    return pageWith(list, {add, remove}, parent);
}

QWidget *ControlPages::makeDragList(QWidget *parent, const ShowValue &show)
{
    auto *list = new CTdDragListCtrl(parent);
    list->setAccessibleName(text(QT_TRANSLATE_NOOP("ControlPages", "Layers")));
    list->InsertColumn(-1, text(QT_TRANSLATE_NOOP("ControlPages", "Layer")), 180);
    list->InsertColumn(-1, text(QT_TRANSLATE_NOOP("ControlPages", "Kind")), 120);
    CTdWkspImageList images;
    images.InitImageList(1);
    for (const Dataset &dataset : datasets) {
        const int row = list->InsertItem(-1, text(dataset.name));
        list->SetItemText(row, 1, CTdCommMethods::GetDatasetTypeName(dataset.type));
        list->SetItemIcon(row, 0, iconOf(images, dataset.type));
    }
    list->SetCurItem(0);
    const auto tell = [list, show] {
        QStringList names;
        for (int row = 0; row < list->GetItemCount(); ++row)
            names += list->GetItemText(row, 0);
        show(ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "from the top: %1")).arg(names.join(u", "_s)));
    };
    QObject::connect(list, &CTdDragListCtrl::rowsMoved, list, tell);
    tell();
    return list;
}
