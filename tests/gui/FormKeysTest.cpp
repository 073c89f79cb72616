#include "common/Buttons.h"
#include "common/FocusSelect.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "common/KeyCodes.h"

#include "support/QtPrinters.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

using namespace qln;

namespace {

QString s(const char *text) { return QString::fromUtf8(text); }

// A list window's command row, with a search box; it notes the keys that reach it.
class KeyForm : public QDialog {
public:
    KeyForm()
    {
        auto *layout = new QVBoxLayout(this);
        search = add<QLineEdit>(layout, "txtSearch");
        add5 = button(layout, "cmdEdit(2)", "F5 Delete");
        accept10 = button(layout, "cmdAccept", "F10\r\nAccept");
        addA = button(layout, "cmdAdd", "&Add");
        quit = button(layout, "cmdQuit", "Esc Cancel");
        gpFormKeys_install(this, quit);
    }

    QLineEdit *search;
    QPushButton *add5, *accept10, *addA, *quit;
    QList<int> reached;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() != Qt::Key_Shift)
            reached << event->key();
        QDialog::keyPressEvent(event);
    }

private:
    template <typename W> W *add(QVBoxLayout *layout, const char *name)
    {
        auto *w = new W(this);
        w->setObjectName(s(name));
        layout->addWidget(w);
        return w;
    }
    QPushButton *button(QVBoxLayout *layout, const char *name, const char *caption)
    {
        auto *b = add<QPushButton>(layout, name);
        b->setText(s(caption));
        b->setAutoDefault(false);
        return b;
    }
};

class FormKeysTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        form.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
        form.search->setFocus();
    }
    KeyForm form;
    QSignalSpy f5{form.add5, &QPushButton::clicked};
    QSignalSpy f10{form.accept10, &QPushButton::clicked};
    QSignalSpy letterA{form.addA, &QPushButton::clicked};
    QSignalSpy esc{form.quit, &QPushButton::clicked};
};

} // namespace

TEST(KeyCaptions, CaptionsBindFunctionKeysByTheirNumber)
{
    EXPECT_EQ(gfiCaption_FKey(s("F10 Accept")), 10);
    EXPECT_EQ(gfiCaption_FKey(s("F10 Accept")) + KeyCode::kFKeyBase, 121);
    EXPECT_EQ(gfiCaption_FKey(s("F11  Print List")), 11);
    EXPECT_EQ(gfiCaption_FKey(s("F2\rAdd")), 2);
    EXPECT_EQ(gfiCaption_FKey(s("Esc Cancel")), 0);
    EXPECT_EQ(gfiCaption_FKey(s("Find")), 0);
    EXPECT_EQ(gfiCaption_FKey(s("f5 Delete")), 0);
    EXPECT_EQ(gfcCaption_AltKey(s("&delete")), QChar(u'D'));
    EXPECT_TRUE(gfcCaption_AltKey(s("Delete&")).isNull());
    EXPECT_EQ(gfiKeyCode_fromQt(Qt::Key_F1), 112);
    EXPECT_EQ(gfiKeyCode_fromQt(Qt::Key_F10), 121);
    EXPECT_EQ(gfiShift_fromQt(Qt::ShiftModifier | Qt::AltModifier), 5);
}

TEST_F(FormKeysTest, FunctionKeysPressTheButtonOfTheirCaptionFromAnyControl)
{
    QTest::keyClick(form.search, Qt::Key_F5);
    QTest::keyClick(form.search, Qt::Key_F10);
    QTest::keyClick(&form, Qt::Key_F5);
    EXPECT_EQ(f5.count(), 2);
    EXPECT_EQ(f10.count(), 1);
    EXPECT_TRUE(form.reached.isEmpty());
}

TEST_F(FormKeysTest, KeysThatNoEnabledButtonTakesGoOnToTheForm)
{
    form.add5->setEnabled(false);
    QTest::keyClick(form.search, Qt::Key_F5);
    QTest::keyClick(form.search, Qt::Key_F6);
    QTest::keyClick(form.search, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(f5.count(), 0);
    EXPECT_EQ(f10.count(), 0);
    EXPECT_EQ(form.reached, (QList<int>{Qt::Key_F5, Qt::Key_F6, Qt::Key_F10}));
}

TEST_F(FormKeysTest, AnEnabledTwinTakesTheKeyADisabledOneLetsThrough)
{
    auto *twin = new QPushButton(s("F5 Remove"), &form);
    QSignalSpy twinPressed(twin, &QPushButton::clicked);
    form.add5->setEnabled(false);
    int keyCode = KeyCode::Key_F1 + 4;
    EXPECT_EQ(gfiKeyDown_dispatch(&form, keyCode, 0), 0);
    EXPECT_EQ(twinPressed.count(), 1);
    EXPECT_EQ(f5.count(), 0);
}

TEST_F(FormKeysTest, LettersBehindTheAmpersandPressTheirButtonWhenNoControlWantsThem)
{
    QTest::keyClicks(form.search, s("a"));
    EXPECT_EQ(form.search->text(), s("a"));
    EXPECT_EQ(letterA.count(), 0);

    form.add5->setFocus();
    QTest::keyClick(form.add5, Qt::Key_A);
    QTest::keyClick(form.add5, Qt::Key_A, Qt::ShiftModifier);
    EXPECT_EQ(letterA.count(), 2);

    form.addA->setEnabled(false);
    QTest::keyClick(form.add5, Qt::Key_A);
    EXPECT_EQ(letterA.count(), 2);
    EXPECT_EQ(form.reached, QList<int>{Qt::Key_A});
}

TEST_F(FormKeysTest, EscPressesTheCancelButtonAndLeavesClosingToIt)
{
    QTest::keyClick(form.search, Qt::Key_Escape);
    EXPECT_EQ(esc.count(), 1);
    EXPECT_TRUE(form.isVisible());

    form.quit->setEnabled(false);
    QTest::keyClick(form.search, Qt::Key_Escape);
    EXPECT_EQ(esc.count(), 1);
    EXPECT_TRUE(form.isVisible());
}

TEST_F(FormKeysTest, TextBoxesSelectTheirWholeTextOnFocus)
{
    auto *second = new QLineEdit(s("12/01/2026"), &form);
    form.layout()->addWidget(second);
    second->show();
    form.search->setText(s("ACME"));
    gpFocusSelect_install(&form);

    second->setFocus();
    EXPECT_EQ(second->selectedText(), s("12/01/2026"));
    form.search->setCursorPosition(2);
    form.search->setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(form.search->selectedText(), s("ACME"));
    EXPECT_EQ(form.search->selectionStart(), 0);
}

TEST(FormLook, AcceptFollowsTextAndFontsBecomeTheProgramFont)
{
    QPushButton accept;
    gpAcceptButton_follow(s("  "), &accept);
    EXPECT_FALSE(accept.isEnabled());
    gpAcceptButton_follow(s(" 5"), &accept);
    EXPECT_TRUE(accept.isEnabled());

    QDialog form;
    auto *odd = new QLabel(s("odd"), &form);
    odd->setFont(QFont(s("Courier"), 14));
    auto *old = new QLabel(s("old"), &form);
    old->setFont(QFont(s("MS Sans Serif"), 8));
    gsFontName.clear();
    gpFont_normalise(&form);
    EXPECT_EQ(gsFontName, s("Arial"));
    EXPECT_EQ(odd->font().family(), s("Arial"));
    EXPECT_EQ(odd->font().pointSize(), 14);
    EXPECT_EQ(old->font().family(), s("MS Sans Serif"));
}
