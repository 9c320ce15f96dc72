#include "controls/NaturalOrder.h"

#include "engine/base/TxNumberText.h"

#include <QCollator>

#include <algorithm>
#include <numeric>
#include <optional>

namespace {

/// A text made ready to be compared many times.
struct Key
{
    enum Kind { Number, Word, Empty };

    Kind kind = Empty;
    double number = 0.0;
    std::optional<QCollatorSortKey> word;
};

Key keyOf(const QString &text, const QCollator &collator)
{
    Key key;
    if (text.trimmed().isEmpty())
        return key;
    bool isNumber = false;
    key.number = TxNumberText::toDouble(text, &isNumber);
    key.kind = isNumber && qIsFinite(key.number) ? Key::Number : Key::Word;
    if (key.kind == Key::Word)
        key.word = collator.sortKey(text.toCaseFolded());
    return key;
}

} // namespace

std::vector<int> naturalOrder(const QStringList &texts, Qt::SortOrder direction)
{
    // The C locale's collator compares code points and takes no digits as numbers: English stands in for it.
    const QLocale locale;
    QCollator collator(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);

    std::vector<Key> keys;
    keys.reserve(size_t(texts.size()));
    for (const QString &text : texts)
        keys.push_back(keyOf(text, collator));

    const auto comesBefore = [](const Key &left, const Key &right) {
        if (left.kind != right.kind)
            return left.kind < right.kind;
        return left.kind == Key::Number ? left.number < right.number
                                        : left.kind == Key::Word && *left.word < *right.word;
    };
    std::vector<int> order(keys.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int leftRow, int rightRow) {
        const Key &left = keys[size_t(leftRow)];
        const Key &right = keys[size_t(rightRow)];
        if (direction == Qt::AscendingOrder || left.kind == Key::Empty || right.kind == Key::Empty)
            return comesBefore(left, right);
        return comesBefore(right, left);
    });
    return order;
}
