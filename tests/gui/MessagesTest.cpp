#include "common/Confirm.h"
#include "platform/Help.h"
#include "platform/Mouse.h"
#include "platform/Settings.h"
#include "platform/WidgetMessages.h"

#include "support/QtPrinters.h"
#include "support/ScriptedMessages.h"

#include <QApplication>
#include <QDesktopServices>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <gtest/gtest.h>

using namespace qln;

namespace {

QString s(const char *text) { return QString::fromUtf8(text); }

// Stands in for the browser.
class Browser : public QObject {
    Q_OBJECT
public:
    Browser() { QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "open"); }
    ~Browser() override { QDesktopServices::unsetUrlHandler(QStringLiteral("https")); }
    QList<QUrl> opened;
public slots:
    void open(const QUrl &url) { opened << url; }
};

} // namespace

TEST(Confirm, AsksYesNoWithTheHelpTextAndTheGivenDefault)
{
    test::ScriptedMessages boxes;
    boxes.answer(MsgAnswer::No);
    EXPECT_FALSE(gfbConfirm(s("Are you sure you want to delete?"), s("Ready To Delete"), 0));
    boxes.answer(MsgAnswer::Yes);
    EXPECT_TRUE(gfbConfirm(s("Purge?"), s("  "), 256));
    EXPECT_FALSE(gfbConfirm(s("Purge?"), QString(), 256));
    EXPECT_TRUE(gfbConfirm(s("Purge?"), QString(), 0));

    ASSERT_EQ(boxes.shown().size(), 4);
    const MessageBoxSpec &first = boxes.shown()[0];
    EXPECT_EQ(first.text, s("Are you sure you want to delete?\r\rReady To Delete"));
    EXPECT_EQ(first.title, s("Quillon"));
    EXPECT_EQ(first.icon, MsgIcon::Question);
    EXPECT_EQ(first.buttons, MsgButtons::YesNo);
    EXPECT_EQ(first.defaultButton, 1);
    EXPECT_EQ(boxes.shown()[1].text, s("Purge?\r\r"));
    EXPECT_EQ(boxes.shown()[1].defaultButton, 2);
}

TEST(WidgetMessagesBox, ShowsTheBoxAsGivenAndEnterTakesItsDefault)
{
    WidgetMessages service;
    QString title, text;
    bool yesAndNo = false;
    QTimer::singleShot(0, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        title = box->windowTitle();
        text = box->text();
        yesAndNo = box->button(QMessageBox::Yes) && box->button(QMessageBox::No) && box->icon() == QMessageBox::Question;
        QTest::keyClick(box, Qt::Key_Return);
    });
    EXPECT_EQ(service.show({s("Change Item?\r\nIt leaves the group."), s("Group Item Selected"), MsgIcon::Question,
                            MsgButtons::YesNo, 2}),
              MsgAnswer::No);
    EXPECT_EQ(title, s("Group Item Selected"));
    EXPECT_EQ(text, s("Change Item?\nIt leaves the group."));
    EXPECT_TRUE(yesAndNo);
}

TEST(MouseAndHelp, PointerIsAStateAndGuidesOpenTheConfiguredPage)
{
    gpMouse_busy();
    gpMouse_busy();
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    gpMouse_normal();
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);

    QTemporaryDir config;
    qputenv("XDG_CONFIG_HOME", config.path().toUtf8());
    Browser browser;
    gpHelp_guides_open(s("promoprices.htm"));
    SaveSetting(kZorSettings, s("Help"), s("GuidesURL"), s("https://guides.test/quillon"));
    gpHelp_guides_open(s("other.htm"));
    EXPECT_EQ(browser.opened, (QList<QUrl>{QUrl(kDefaultGuidesUrl), QUrl(s("https://guides.test/quillon"))}));
}

#include "MessagesTest.moc"
