#pragma once

#include <QDialog>

class QLabel;
class QListWidget;
class QPushButton;
class QStackedWidget;

/// Shows every control of the library at work: a list of them at the left, at the right the control itself, what it
/// does and its value. The commands that they send show at the foot.
class ControlsWindow : public QDialog
{
    Q_OBJECT

public:
    explicit ControlsWindow(QWidget *parent = nullptr);
    ~ControlsWindow() override;

    int pageCount() const;
    /// Shows the page @p index of controlPages(), which is made now if it never showed before.
    void showPage(int index);
    QWidget *page() const;
    QString valueText() const;
    QString commandText() const;

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void turnTo(int index);
    void noteCommand(QEvent *event);

    QListWidget *m_list;
    QLabel *m_title;
    QLabel *m_classes;
    QLabel *m_what;
    QStackedWidget *m_pages;
    QLabel *m_value;
    QLabel *m_command;
    QPushButton *m_close;
    QStringList m_values; ///< of each page, as it told last
};
