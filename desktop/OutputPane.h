#pragma once

#include <QWidget>

class QAction;
class QPlainTextEdit;

/// The output pane: the lines that the library and the desktop tell the user, the last at the bottom.
///
/// Text can be selected and copied. The pane keeps the last 10,000 lines.
class OutputPane : public QWidget
{
    Q_OBJECT
public:
    explicit OutputPane(QWidget *parent = nullptr);

    /// Adds @p text as a line; line ends within it start further lines. The view follows unless the user has scrolled
    /// away from the end.
    void print(const QString &text);
    /// Everything that is shown.
    QString text() const;
    void clear();
    /// Puts the selection on the clipboard, everything when nothing is selected.
    void copy();

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void updateActions();

    QPlainTextEdit *m_edit;
    QAction *m_copy;
    QAction *m_clear;
};
