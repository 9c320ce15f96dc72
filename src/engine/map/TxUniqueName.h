#pragma once

#include <QString>

/// @p proposal when @p isTaken says it is free, else the first free one of "proposal_1", "proposal_2", …
template<class IsTaken>
QString txUniqueName(const QString &proposal, IsTaken isTaken)
{
    QString name = proposal;
    for (int number = 1; isTaken(name); ++number)
        name = QStringLiteral("%1_%2").arg(proposal, QString::number(number));
    return name;
}
