#include "promo/FrmMatrixList.h"

#include "common/FormControls.h"
#include "common/FormLook.h"
#include "common/ProcessState.h"
#include "promo/MatrixPromos.h"
#include "promo/PromoPricing.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace qln {

FrmMatrixList::FrmMatrixList(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("FrmMatrixList"));
    setWindowTitle(kProgramName);
    LstMatrix = new QListWidget(this);
    LstMatrix->setObjectName(QStringLiteral("LstMatrix"));
    CmdEdit[1] = gfCommand_button(this, QStringLiteral("CmdEdit(1)"), QStringLiteral("F10 Accept"));
    CmdEdit[0] = gfCommand_button(this, QStringLiteral("CmdEdit(0)"), QStringLiteral("Esc Cancel"));
    connect(CmdEdit[1], &QPushButton::clicked, this, [this] { CmdAccept_Click(); });
    connect(CmdEdit[0], &QPushButton::clicked, this, &QDialog::reject);
    connect(LstMatrix, &QListWidget::itemDoubleClicked, this, [this] { CmdAccept_Click(); });

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(CmdEdit[1]);
    buttons->addWidget(CmdEdit[0]);
    auto *form = new QVBoxLayout(this);
    form->addWidget(LstMatrix, 1);
    form->addLayout(buttons);

    LstMatrix->addItems(gfMatrixList_entries());
    gpFont_normalise(this);
    resize(420, 320);
}

void FrmMatrixList::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::NoModifier) {
        CmdAccept_Click();
        return;
    }
    QDialog::keyPressEvent(event);
}

void FrmMatrixList::CmdAccept_Click()
{
    gpPromo_clear();
    if (LstMatrix->count() > 0) {
        gGroupPromo = gPromo;
        const QListWidgetItem *chosen = LstMatrix->currentRow() >= 0 ? LstMatrix->currentItem() : nullptr;
        ChosenText = chosen ? chosen->text() : QString();
        gGroupPromo.GroupID = gfiMatrix_entry_number(ChosenText, 4);
        Taken = true;
    }
    accept();
}

} // namespace qln
