#pragma once

#include "engine/base/TxExport.h"
#include "engine/base/TxProgress.h"

#include <QDialog>
#include <QString>
#include <QStringList>

#include <concepts>
#include <memory>

/// The engine's modeless progress window, shown while work goes on in a loop of the caller's.
///
/// While it shows, the user can use no other window of the program: a key or a click reaches the Cancel button alone.
/// Windows are still painted, but timers of other windows wait, so that nothing reads data in the middle of the work.
/// Events are handled inside SetProgressPos(), KeepAlive() and the function that GetProgress() gives; calls that come
/// out of that handling do not handle events again.
///
/// Needs a QApplication; see IsAvailable(). User-interface thread only.
class TX_EXPORT CTxDlgProgress : public QDialog
{
    Q_OBJECT
public:
    /// The delay for work that is often done in no time; see SetShowDelay().
    static constexpr int usualDelay = 300;

    CTxDlgProgress();
    ~CTxDlgProgress() override;

    /// True when a window can be made here: on the user-interface thread of a program with windows.
    static bool IsAvailable();

    /// Begins: the position is 0 and nothing is cancelled. Shows the window, centred over @p parent (may be null), or
    /// arms the delay. The parent owns the window only if it goes first.
    void Create(QWidget *parent);
    /// How many milliseconds after Create() the window shows; 0, at the start, for at once. To be set before Create().
    void SetShowDelay(int milliseconds);

    /// The text of the title bar.
    void SetWindowTitle(const QString &title);
    /// The headline within the window: what is being done. Plain text; empty for none.
    void SetTitleMessage(const QString &text);
    /// The line below it: what is being worked at. Plain text.
    void SetMessage(const QString &text);
    /// SetMessage() with a text that has places for @p args: see Format(). Whole numbers, numbers and texts may be
    /// given; the numbers are written the same under every locale.
    template<class... Args>
    void FormatMessage(const QString &pattern, const Args &...args)
    {
        SetMessage(Format(pattern, QStringList{argument(args)...}));
    }
    /// @p pattern with @p args in their places: "%1" to "%9" name them, "%d", "%i", "%u", "%f", "%g" and "%s" take the
    /// next one, of whatever kind it is; "%%" is a percent sign. A place without an argument stays as it is.
    static QString Format(const QString &pattern, const QStringList &args);

    /// How much is done, 0 to 100 (kept within that). Handles events when that is news.
    void SetProgressPos(int position);
    int GetProgressPos() const;
    /// Shows that work goes on of which it is not known how long it takes, until the next SetProgressPos().
    void SetIndeterminate();
    bool IsIndeterminate() const;

    /// Handles events, if it is a while (30 ms) since that was last done. @return false when the user has cancelled.
    bool KeepAlive();
    /// Whether the user may cancel; at the start he may. Without that there is no button.
    void SetCancelable(bool on);
    /// True once the user has cancelled by the button, Escape or by closing the window, which stays until its owner
    /// lets it go.
    bool IsCanceled() const;

    /// The window as a progress function: shows position and count, tells how long the rest will take, and asks the
    /// work to stop when the user cancels or the window is gone. It may be called as often as the work likes.
    TxProgress GetProgress();

    /// How the time that is left is told: "About 20 s left". Empty for what is no time.
    static QString TimeLeftText(double seconds);

public Q_SLOTS:
    /// Cancels.
    void reject() override;

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    static QString argument(const QString &text) { return text; }
    static QString argument(double value);
    template<std::integral T>
    static QString argument(T value)
    {
        return QString::number(value);
    }
    bool advance(qint64 done, qint64 total);

    const std::unique_ptr<class TxDlgProgressPrivate> d;
};
