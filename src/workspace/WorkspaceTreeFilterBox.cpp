#include "workspace/WorkspaceTreeFilterBox.h"

#include "common/TdModule.h"
#include "res/StringId.h"
#include "workspace/WorkspaceBarTree.h"
#include "workspace/WorkspaceTreeDelegate.h"
#include "workspace/WorkspaceTreeFilter.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>

namespace {

/// How long the user must stop typing before the filter begins, in milliseconds.
constexpr int typingPause = 120;
constexpr int longestText = 200;

} // namespace

class WorkspaceTreeFilterBoxPrivate
{
public:
    QPointer<CWorkspaceBarTree> tree;
    QLineEdit *edit = nullptr;  // owned by the box
    QLabel *count = nullptr;    // owned by the box
    QAction *icon = nullptr;    // owned by the line edit
    QPointer<QLabel> emptyNote; // owned by the tree's viewport
    std::unique_ptr<WorkspaceTreeFilter> filter;
    QTimer typing;
};

CWorkspaceTreeFilterBox::CWorkspaceTreeFilterBox(QWidget *parent)
    : QWidget(parent), d(std::make_unique<WorkspaceTreeFilterBoxPrivate>())
{
    init();
}

CWorkspaceTreeFilterBox::CWorkspaceTreeFilterBox(CWorkspaceBarTree *tree, QWidget *parent)
    : CWorkspaceTreeFilterBox(parent)
{
    SetTree(tree);
}

CWorkspaceTreeFilterBox::~CWorkspaceTreeFilterBox()
{
    SetTree(nullptr);
}

void CWorkspaceTreeFilterBox::init()
{
    d->edit = new QLineEdit(this);
    d->edit->setClearButtonEnabled(true);
    d->edit->setMaxLength(longestText);
    d->icon = d->edit->addAction(CTdModule::LoadIcon(QStringLiteral("actions/filter")), QLineEdit::LeadingPosition);
    d->edit->installEventFilter(this);
    d->count = new QLabel(this);
    d->count->setForegroundRole(QPalette::WindowText);
    d->count->hide();

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(d->edit, 1);
    layout->addWidget(d->count);
    setFocusProxy(d->edit);
    setTexts();

    d->typing.setSingleShot(true);
    d->typing.setInterval(typingPause);
    connect(&d->typing, &QTimer::timeout, this, &CWorkspaceTreeFilterBox::applyText);
    connect(d->edit, &QLineEdit::textChanged, this, [this](const QString &text) {
        if (text.isEmpty())
            applyText(); // nobody waits for everything to come back
        else
            d->typing.start();
    });
}

void CWorkspaceTreeFilterBox::setTexts()
{
    const QString prompt = CTdModule::LoadString(TdStringId::TreeFilterPrompt);
    d->edit->setPlaceholderText(prompt);
    d->edit->setAccessibleName(prompt);
}

void CWorkspaceTreeFilterBox::SetTree(CWorkspaceBarTree *tree)
{
    if (d->tree == tree)
        return;
    if (d->tree) {
        d->tree->viewport()->removeEventFilter(this);
        delete d->emptyNote;
        // The old filter brings everything back in its own time.
        if (WorkspaceTreeFilter *old = d->filter.release()) {
            old->setParent(d->tree);
            old->disconnect(this);
            connect(old, &WorkspaceTreeFilter::finished, old, &QObject::deleteLater);
            if (old->isActive() || old->isRunning())
                old->setText(QString());
            else
                old->deleteLater();
        }
    }
    d->filter.reset();
    d->tree = tree;
    if (!tree)
        return;
    d->filter = std::make_unique<WorkspaceTreeFilter>(tree);
    connect(d->filter.get(), &WorkspaceTreeFilter::finished, this, &CWorkspaceTreeFilterBox::showResult);
    tree->viewport()->installEventFilter(this);
    applyText();
}

CWorkspaceBarTree *CWorkspaceTreeFilterBox::GetTree() const
{
    return d->tree;
}

QString CWorkspaceTreeFilterBox::GetText() const
{
    return d->edit->text();
}

void CWorkspaceTreeFilterBox::SetText(const QString &text)
{
    d->edit->setText(text);
}

int CWorkspaceTreeFilterBox::GetFoundCount() const
{
    return d->filter && d->filter->isActive() ? d->filter->found() : 0;
}

void CWorkspaceTreeFilterBox::applyText()
{
    d->typing.stop();
    if (d->filter)
        d->filter->setText(d->edit->text());
    if (d->edit->text().isEmpty())
        showResult();
}

/// Shows how many items match, and a note in the tree when none does.
void CWorkspaceTreeFilterBox::showResult()
{
    const bool active = d->filter && d->filter->isActive();
    const int found = GetFoundCount();
    const QString text = active ? CTdModule::LoadString(TdStringId::TreeFilterFound).arg(found) : QString();
    d->count->setText(text);
    d->count->setVisible(active);
    d->edit->setAccessibleDescription(text);

    const bool nothing = active && found == 0 && !d->filter->isRunning();
    if (nothing && !d->emptyNote && d->tree) {
        d->emptyNote = new QLabel(d->tree->viewport());
        d->emptyNote->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        d->emptyNote->setWordWrap(true);
        d->emptyNote->setTextFormat(Qt::PlainText);
        d->emptyNote->setForegroundRole(QPalette::PlaceholderText);
        d->emptyNote->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    if (d->emptyNote) {
        constexpr qsizetype longestQuoted = 60;
        d->emptyNote->setText(CTdModule::LoadString(TdStringId::TreeFilterNothing)
                                  .arg(WorkspaceTreeDelegate::shownText(d->edit->text(), longestQuoted)));
        d->emptyNote->setVisible(nothing);
        placeEmptyNote();
    }
    if (d->filter && !d->filter->isRunning())
        Q_EMIT filtered(found);
}

void CWorkspaceTreeFilterBox::placeEmptyNote()
{
    if (!d->emptyNote || !d->tree)
        return;
    const QRect area = d->tree->viewport()->rect();
    const int margin = d->emptyNote->fontMetrics().height();
    d->emptyNote->setGeometry(area.adjusted(margin, margin * 2, -margin, 0));
}

void CWorkspaceTreeFilterBox::goToTree()
{
    if (!d->tree)
        return;
    if (QTreeWidgetItem *match = GetFoundCount() > 0 ? d->filter->firstMatch() : nullptr)
        d->tree->setCurrentItem(match);
    d->tree->setFocus(Qt::OtherFocusReason);
}

bool CWorkspaceTreeFilterBox::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == d->edit && event->type() == QEvent::KeyPress) {
        switch (static_cast<const QKeyEvent *>(event)->key()) {
        case Qt::Key_Escape:
            if (d->edit->text().isEmpty())
                goToTree();
            else
                d->edit->clear();
            return true;
        case Qt::Key_Down:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (d->typing.isActive())
                applyText();
            goToTree();
            return true;
        default:
            break;
        }
    } else if (event->type() == QEvent::Resize && d->tree && watched == d->tree->viewport()) {
        // The type comes first: while the tree is destroyed its viewport still sends events, and the tree is none then.
        placeEmptyNote();
    }
    return QWidget::eventFilter(watched, event);
}

void CWorkspaceTreeFilterBox::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        setTexts();
        showResult();
    }
    QWidget::changeEvent(event);
}
