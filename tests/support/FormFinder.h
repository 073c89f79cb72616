#pragma once
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

// Finding a form's controls by the names its code gives them, and typing as a user would.
namespace qln::test {

template <typename T> T *child(QWidget &form, const QString &name)
{
    T *widget = form.findChild<T *>(name);
    EXPECT_NE(widget, nullptr) << name.toStdString();
    return widget;
}

inline QPushButton *cmd(QWidget &form, const QString &name) { return child<QPushButton>(form, name); }

// Replaces what the box holds by keystrokes, so the box's own key handling runs.
inline void typeInto(QLineEdit *box, const QString &text)
{
    box->clear();
    QTest::keyClicks(box, text);
}

} // namespace qln::test
