#include "shell/FrmMenu.h"

#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "common/ProcessState.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <utility>

namespace qln {

namespace {

struct PromoKind {
    const char *caption;
    const char *explanation;
};

constexpr PromoKind kKinds[FrmMenu::kPromoKinds] = {
    {"Item Promos", "Promos on individual Items"},
    {"Department Promos", "Promos that apply to an entire Department"},
    {"Group Promos", "Promos on a defined list of items"},
    {"Matrix Promos", "Promos on all items in a matrix"},
    {"Daily Promos", "Promos all discountable items for a single day."},
};

QPushButton *commandButton(QWidget *form, const QString &name, const QString &caption)
{
    QPushButton *button = gfCommand_button(form, name, caption);
    button->setMinimumWidth(160);
    return button;
}

} // namespace

FrmMenu::FrmMenu(Windows windows, QWidget *parent) : QDialog(parent), m_windows(std::move(windows))
{
    setObjectName(QStringLiteral("FrmMenu"));
    setWindowTitle(kProgramName);
    auto *layout = new QGridLayout(this);
    for (int i = 0; i < kPromoKinds; ++i) {
        QPushButton *button = commandButton(this, QStringLiteral("Command1(%1)").arg(i),
                                            QString::fromLatin1(kKinds[i].caption));
        auto *explanation = new QLabel(QString::fromLatin1(kKinds[i].explanation), this);
        explanation->setObjectName(QStringLiteral("lblCommand1(%1)").arg(i));
        layout->addWidget(button, i, 0);
        layout->addWidget(explanation, i, 1);
        connect(button, &QPushButton::clicked, this, [this, i] { mpWindow_open(i); });
    }
    QPushButton *exit = commandButton(this, QStringLiteral("Command2"), QStringLiteral("Exit"));
    layout->addWidget(exit, kPromoKinds, 0);
    connect(exit, &QPushButton::clicked, this, [this] { done(kExit); });

    gpFormKeys_install(this, exit);
    gpFont_normalise(this);
    if (const QString shot = qEnvironmentVariable("QUILLON_SCREENSHOT"); !shot.isEmpty())
        mpScreenshot_take(shot);
}

void FrmMenu::mpWindow_open(int index)
{
    m_windows[index]();
    QCoreApplication::processEvents();
}

// Proves the window on a machine without a display: a picture of it, then "Exit".
void FrmMenu::mpScreenshot_take(const QString &file)
{
    QTimer::singleShot(500, this, [this, file] {
        grab().save(file);
        done(kExit);
    });
}

} // namespace qln
