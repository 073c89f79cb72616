#include "common/FormLook.h"
#include "platform/Clock.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? QByteArray("offscreen") : qgetenv("QT_QPA_PLATFORM"));
    qln::gpLocalTime_pin();
    QApplication app(argc, argv);
    qln::gpFormLook_install();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
