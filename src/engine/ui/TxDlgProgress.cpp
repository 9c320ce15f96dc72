#include "engine/ui/TxDlgProgress.h"

#include "engine/base/TxNumberText.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr qint64 handlingMilliseconds = 30;   // between two handlings of events
constexpr qint64 timeLeftMilliseconds = 1000; // between two tellings of the time that is left
constexpr qint64 timeLeftAfter = 2000;        // before that, and before so much is done, nothing sensible can be told
constexpr double timeLeftFraction = 0.02;

QString translated(const char *text)
{
    return QCoreApplication::translate("TdCommon", text);
}

/// Lets the timers of other windows wait. A timer whose event is held back comes again, also one that fires once.
class TimerHold : public QObject
{
public:
    explicit TimerHold(const QObject *allowed) : m_allowed(allowed)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        if (event->type() != QEvent::Timer || (!receiver->isWidgetType() && !qobject_cast<QTimer *>(receiver)))
            return false; // animations of the style go on
        const QObject *owner = receiver;
        while (owner && owner != m_allowed)
            owner = owner->parent();
        return !owner;
    }

private:
    const QObject *m_allowed; // not owned
};

} // namespace

class TxDlgProgressPrivate
{
public:
    explicit TxDlgProgressPrivate(CTxDlgProgress *owner);

    void setTexts();
    void showPosition(int position);
    void showDetail();
    void handleEvents();

    CTxDlgProgress *const q;
    QLabel *title;
    QLabel *message;
    QProgressBar *bar;
    QLabel *detail; // count and time left
    QPushButton *cancel;
    int delay = 0;
    int position = 0;
    qint64 done = 0;
    qint64 total = 0; // 0: nobody counts
    QString timeLeft;
    QElapsedTimer sinceStart;
    QElapsedTimer sinceEvents;
    QElapsedTimer sinceTimeLeft;
    bool isCanceled = false;
    bool isCancelable = true;
    bool isHandling = false;
    bool isWaiting = false; // for its delay to pass
};

TxDlgProgressPrivate::TxDlgProgressPrivate(CTxDlgProgress *owner)
    : q(owner), title(new QLabel), message(new QLabel), bar(new QProgressBar), detail(new QLabel),
      cancel(new QPushButton)
{
    for (QLabel *label : {title, message, detail}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    title->hide();
    message->hide();
    detail->setForegroundRole(QPalette::PlaceholderText);
    bar->setRange(0, 100);
    bar->setMinimumWidth(q->fontMetrics().averageCharWidth() * 56);
    cancel->setAutoDefault(false); // Return shall not end long work by mistake

    auto *bottom = new QHBoxLayout;
    bottom->addWidget(detail, 1);
    bottom->addWidget(cancel);
    auto *layout = new QVBoxLayout(q);
    layout->addWidget(title);
    layout->addWidget(message);
    layout->addWidget(bar);
    layout->addLayout(bottom);
    layout->setSizeConstraint(QLayout::SetMinimumSize);
    setTexts();
}

void TxDlgProgressPrivate::setTexts()
{
    cancel->setText(isCanceled ? translated(QT_TRANSLATE_NOOP("TdCommon", "Stopping…"))
                               : translated(QT_TRANSLATE_NOOP("TdCommon", "Cancel")));
    bar->setAccessibleName(translated(QT_TRANSLATE_NOOP("TdCommon", "Progress")));
}

void TxDlgProgressPrivate::showPosition(int value)
{
    position = value;
    bar->setRange(0, 100);
    bar->setValue(value);
}

void TxDlgProgressPrivate::showDetail()
{
    const double fraction = total > 0 ? double(done) / double(total) : position / 100.0;
    const bool canTell = fraction >= timeLeftFraction && sinceStart.hasExpired(timeLeftAfter) && !q->IsIndeterminate();
    if (!canTell) {
        timeLeft.clear();
    } else if (!sinceTimeLeft.isValid() || sinceTimeLeft.hasExpired(timeLeftMilliseconds)) {
        sinceTimeLeft.start();
        timeLeft = CTxDlgProgress::TimeLeftText(double(sinceStart.elapsed()) / 1000 * (1 - std::min(fraction, 1.0)) /
                                                fraction);
    }
    QStringList parts;
    const QLocale locale;
    if (total > 0)
        parts << translated(QT_TRANSLATE_NOOP("TdCommon", "%1 of %2"))
                     .arg(locale.toString(std::min(done, total)), locale.toString(total));
    else if (done > 0)
        parts << locale.toString(done);
    if (!timeLeft.isEmpty())
        parts << timeLeft;
    detail->setText(parts.join(QStringLiteral(" · ")));
}

void TxDlgProgressPrivate::handleEvents()
{
    if (isHandling)
        return;
    if (isWaiting && sinceStart.hasExpired(delay)) {
        isWaiting = false;
        q->show();
    }
    sinceEvents.start();
    if (!q->isVisible())
        return;
    showDetail();
    const QPointer<CTxDlgProgress> guard(q);
    isHandling = true;
    {
        const TimerHold hold(q);
        QCoreApplication::processEvents();
    }
    if (guard)
        isHandling = false;
}

CTxDlgProgress::CTxDlgProgress() : d(std::make_unique<TxDlgProgressPrivate>(this))
{
    setWindowModality(Qt::ApplicationModal);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    connect(d->cancel, &QPushButton::clicked, this, &CTxDlgProgress::reject);
}

CTxDlgProgress::~CTxDlgProgress() = default;

bool CTxDlgProgress::IsAvailable()
{
    const auto *application = qobject_cast<QApplication *>(QCoreApplication::instance());
    return application && application->thread() == QThread::currentThread();
}

void CTxDlgProgress::Create(QWidget *parent)
{
    if (parent != parentWidget())
        setParent(parent ? parent->window() : nullptr, windowFlags());
    d->isCanceled = false;
    d->cancel->setEnabled(true);
    d->done = d->total = 0;
    d->timeLeft.clear();
    d->detail->clear();
    d->setTexts();
    d->showPosition(0);
    d->sinceStart.start();
    d->sinceEvents.start();
    d->sinceTimeLeft.invalidate();
    d->isWaiting = d->delay > 0;
    if (d->isWaiting)
        return;
    show();
    d->handleEvents();
}

void CTxDlgProgress::SetShowDelay(int milliseconds)
{
    d->delay = std::max(milliseconds, 0);
}

void CTxDlgProgress::SetWindowTitle(const QString &title)
{
    setWindowTitle(title);
}

void CTxDlgProgress::SetTitleMessage(const QString &text)
{
    d->title->setText(text);
    d->title->setVisible(!text.isEmpty());
    d->bar->setAccessibleDescription(text);
}

void CTxDlgProgress::SetMessage(const QString &text)
{
    d->message->setText(text);
    d->message->setVisible(!text.isEmpty());
}

QString CTxDlgProgress::argument(double value)
{
    return TxNumberText::shortest(value);
}

QString CTxDlgProgress::Format(const QString &pattern, const QStringList &args)
{
    QString result;
    qsizetype next = 0;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar kind = pattern[i] == u'%' && i + 1 < pattern.size() ? pattern[i + 1] : QChar();
        qsizetype index = -1;
        if (kind >= u'1' && kind <= u'9')
            index = kind.unicode() - u'1';
        else if (!kind.isNull() && QStringView(u"diufgs").contains(kind))
            index = next++;
        const bool isFilled = index >= 0 && index < args.size();
        if (isFilled)
            result += args[index];
        else
            result += pattern[i];
        if (isFilled || kind == u'%')
            ++i;
    }
    return result;
}

void CTxDlgProgress::SetProgressPos(int position)
{
    position = std::clamp(position, 0, 100);
    if (position == d->position && !IsIndeterminate())
        return;
    d->showPosition(position);
    d->handleEvents();
}

int CTxDlgProgress::GetProgressPos() const
{
    return d->position;
}

void CTxDlgProgress::SetIndeterminate()
{
    d->bar->setRange(0, 0);
}

bool CTxDlgProgress::IsIndeterminate() const
{
    return d->bar->maximum() == 0;
}

bool CTxDlgProgress::KeepAlive()
{
    if (!d->sinceEvents.isValid() || d->sinceEvents.hasExpired(handlingMilliseconds)) {
        const QPointer<CTxDlgProgress> guard(this);
        d->handleEvents();
        if (!guard)
            return false;
    }
    return !d->isCanceled;
}

void CTxDlgProgress::SetCancelable(bool on)
{
    d->isCancelable = on;
    d->cancel->setVisible(on);
}

bool CTxDlgProgress::IsCanceled() const
{
    return d->isCanceled;
}

TxProgress CTxDlgProgress::GetProgress()
{
    return [self = QPointer(this)](qint64 done, qint64 total) { return self && self->advance(done, total); };
}

bool CTxDlgProgress::advance(qint64 done, qint64 total)
{
    if (!d->sinceEvents.hasExpired(handlingMilliseconds))
        return !d->isCanceled;
    d->done = std::max<qint64>(done, 0);
    d->total = std::max<qint64>(total, 0);
    if (d->total > 0)
        d->showPosition(static_cast<int>(double(std::min(d->done, d->total)) / double(d->total) * 100));
    else
        SetIndeterminate();
    return KeepAlive();
}

QString CTxDlgProgress::TimeLeftText(double seconds)
{
    constexpr double minute = 60, hour = 3600;
    if (!std::isfinite(seconds) || seconds < 0)
        return QString();
    QString time;
    if (seconds <= 55) // in steps of five, so that the number does not flicker
        time = translated(QT_TRANSLATE_NOOP("TdCommon", "%1 s"))
                   .arg(std::max(5, 5 * static_cast<int>(std::ceil(seconds / 5))));
    else if (seconds <= 59.5 * minute)
        time = translated(QT_TRANSLATE_NOOP("TdCommon", "%1 min"))
                   .arg(std::max(1, static_cast<int>(std::lround(seconds / minute))));
    else if (seconds < 1000 * hour)
        time = translated(QT_TRANSLATE_NOOP("TdCommon", "%1 h"))
                   .arg(std::max(1, static_cast<int>(std::lround(seconds / hour))));
    return time.isEmpty() ? QString() : translated(QT_TRANSLATE_NOOP("TdCommon", "About %1 left")).arg(time);
}

void CTxDlgProgress::reject()
{
    if (d->isCanceled || !d->isCancelable)
        return;
    d->isCanceled = true;
    d->cancel->setEnabled(false);
    d->setTexts();
}

void CTxDlgProgress::closeEvent(QCloseEvent *event)
{
    reject();
    event->ignore();
}

void CTxDlgProgress::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        d->setTexts();
}
