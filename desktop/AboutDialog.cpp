#include "AboutDialog.h"

#include "Icons.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFont>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

AboutDialog::AboutDialog(QWidget *parent) : QDialog(parent)
{
    setWindowTitle(tr("About Terravox"));
    auto *picture = new QLabel;
    picture->setPixmap(Icons::application().pixmap(QSize(64, 64), devicePixelRatio()));
    picture->setAlignment(Qt::AlignTop | Qt::AlignHCenter);
    auto *name = new QLabel(tr("Terravox"));
    QFont font = name->font();
    font.setPointSizeF(font.pointSizeF() * 1.8);
    font.setBold(true);
    name->setFont(font);
    auto *version = new QLabel(tr("Version %1").arg(QCoreApplication::applicationVersion()));
    version->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    version->setForegroundRole(QPalette::PlaceholderText);
    auto *text = new QLabel(tr("A desktop for geographic data: workspaces, maps and attribute tables.\n\n"
                               "Built on Qt %1, GDAL, PROJ, GEOS and SQLite.")
                                .arg(QString::fromLatin1(qVersion())));
    text->setWordWrap(true);
    text->setMinimumWidth(340);

    auto *words = new QVBoxLayout;
    words->addWidget(name);
    words->addWidget(version);
    words->addSpacing(9);
    words->addWidget(text);
    words->addStretch();
    auto *top = new QHBoxLayout;
    top->setSpacing(18);
    top->addWidget(picture);
    top->addLayout(words, 1);
    auto *box = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 18, 18, 12);
    layout->addLayout(top, 1);
    layout->addSpacing(9);
    layout->addWidget(box);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}
