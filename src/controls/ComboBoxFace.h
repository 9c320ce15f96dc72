#pragma once

#include <QPointer>
#include <QWidget>

class CTdAutoWidthComboBox;
class QAbstractItemModel;
class QFrame;

/// How a combo box button looks on one toolbar: on a lying one as a combo box, on an upright one as a button with the
/// text running up, which drops the entries down beside the bar, with an edit above them where a text may be typed.
///
/// It shows what it is told, and tells what the user does; it decides nothing.
class ComboBoxFace : public QWidget
{
    Q_OBJECT

public:
    /// @param entries shared by all faces of the button, not owned @param length pixels along the bar
    explicit ComboBoxFace(QAbstractItemModel *entries, int length, QWidget *parent);
    ~ComboBoxFace() override;

    void setUpright(bool upright);
    void setLength(int length);
    void setEditable(bool editable);
    /// Shows the entry @p index, or none (-1), and @p text.
    void showEntry(int index, const QString &text);
    void describe(const QString &name, const QString &toolTip);

Q_SIGNALS:
    /// The user chose an entry.
    void activated(int index);
    /// The user finished typing.
    void typed(const QString &text);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void fit();
    void dropDown();
    void takeEntry(const QModelIndex &index);

    QAbstractItemModel *const m_entries;
    CTdAutoWidthComboBox *m_box; // a child; hidden while upright
    QPointer<QFrame> m_panel;    // what is dropped down while upright; a child
    int m_length;
    bool m_isUpright = false;
    int m_index = -1;
    QString m_text;
    QString m_name;
};
