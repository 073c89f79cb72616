#include "promo/frmCode_Edit.h"

#include "common/FocusSelect.h"
#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "platform/Help.h"
#include "promo/PromoGroups.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace qln {

frmCode_Edit::frmCode_Edit(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmCode_Edit"));
    static const char *const captions[] = {"Group Code", "Description"};
    const int lengths[] = {kGroupCodeLength, kGroupLabelLength};
    auto *grid = new QGridLayout(this);
    for (int i = 0; i < 2; ++i) {
        txtEdit[i] = new QLineEdit(this);
        txtEdit[i]->setObjectName(QStringLiteral("txtEdit(%1)").arg(i));
        txtEdit[i]->setMaxLength(lengths[i]);
        connect(txtEdit[i], &QLineEdit::textEdited, this, [this, i] { mpBox_changed(i); });
        connect(txtEdit[i], &QLineEdit::returnPressed, this, [this] { mpBox_enter(); });
        grid->addWidget(gfForm_label(this, QStringLiteral("lblEdit(%1)").arg(i), QString::fromLatin1(captions[i])), i, 0);
        grid->addWidget(txtEdit[i], i, 1);
    }
    txtEdit[0]->setMaximumWidth(60);
    txtEdit[1]->setMinimumWidth(260);
    cmdAcceptCancel[0] = gfCommand_button(this, QStringLiteral("cmdAcceptCancel(0)"), QStringLiteral("F10 &Accept"));
    cmdAcceptCancel[1] = gfCommand_button(this, QStringLiteral("cmdAcceptCancel(1)"), QStringLiteral("Esc Cancel"));
    cmdHelp = gfCommand_button(this, QStringLiteral("cmdHelp"), QStringLiteral("F1  Help"));
    connect(cmdAcceptCancel[0], &QPushButton::clicked, this, [this] { cmdAccept_Click(); });
    connect(cmdAcceptCancel[1], &QPushButton::clicked, this, [this] {
        Cancelled = true;
        reject();
    });
    connect(cmdHelp, &QPushButton::clicked, this, [] { gpHelp_guides_open(QStringLiteral("promoprices.htm")); });
    auto *buttons = new QHBoxLayout;
    for (QPushButton *b : {cmdHelp, cmdAcceptCancel[0], cmdAcceptCancel[1]})
        buttons->addWidget(b);
    grid->addLayout(buttons, 2, 0, 1, 2);

    gpFormKeys_install(this, cmdAcceptCancel[1]);
    gpFocusSelect_install(this);
}

void frmCode_Edit::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (mbLoaded)
        return;
    mbLoaded = true;
    Cancelled = true;
    cmdAcceptCancel[0]->setEnabled(false);
    setWindowTitle(Mode == kModeAdd ? QStringLiteral("Add New Group") : QStringLiteral("Change Group Name Code"));
    txtEdit[0]->setText(Code);
    txtEdit[1]->setText(Label);
    gpFont_normalise(this);
    txtEdit[0]->setFocus();
}

void frmCode_Edit::mpBox_changed(int box)
{
    cmdAcceptCancel[0]->setEnabled(!txtEdit[box]->text().trimmed().isEmpty());
}

void frmCode_Edit::mpBox_enter()
{
    if (cmdAcceptCancel[0]->isEnabled())
        cmdAcceptCancel[0]->click();
}

void frmCode_Edit::cmdAccept_Click()
{
    Cancelled = false;
    Code = txtEdit[0]->text();
    Label = txtEdit[1]->text();
    accept();
}

} // namespace qln
