#pragma once

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QValidator>

#include <functional>

/// What a validator says to an entry: taken, perhaps in another spelling, or refused with a message to the user.
struct CellVerdict
{
    bool accepted = false;
    QString text; ///< the text that the cell gets, or the message; an empty message becomes a general one

    static CellVerdict Accept(const QString &text) { return {true, text}; }
    static CellVerdict Refuse(const QString &message) { return {false, message}; }
};

/// How the user changes the cells of one column of a report list.
struct CellEditor
{
    enum Kind {
        None,   ///< not at all
        Text,   ///< in a line edit
        Choice, ///< in a combo box with fixed choices
        Check   ///< by a check box that always shows
    };
    /// Judges what the user entered in row @p row. It may change the list, even empty it.
    using Validator = std::function<CellVerdict(int row, const QString &text)>;

    Kind kind = None;
    QStringList choices;              ///< of a Choice; without any the column cannot be edited
    Validator validator;              ///< of a Text or Choice; empty: every entry is taken
    QPointer<const QValidator> typed; ///< of a Text, not owned: which keys are taken; what it refuses, validator explains
};
