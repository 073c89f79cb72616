#include "common/TabOrder.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QGridLayout>
#include <QLayout>
#include <QWidget>

#include <algorithm>
#include <tuple>

namespace qln {

namespace {

void collect(QLayout *layout, QList<QWidget *> &out);

void visit(QWidget *widget, QList<QWidget *> &out)
{
    if ((widget->focusPolicy() & Qt::TabFocus) || widget->focusProxy()) {
        out << widget;
        return;
    }
    if (widget->layout())
        collect(widget->layout(), out);
}

void collect(QLayout *layout, QList<QWidget *> &out)
{
    struct Placed {
        int row, col, index;
        QLayoutItem *item;
    };
    QList<Placed> items;
    const auto *grid = qobject_cast<QGridLayout *>(layout);
    for (int i = 0; i < layout->count(); ++i) {
        int row = i, col = 0, rowSpan = 1, colSpan = 1;
        if (grid)
            grid->getItemPosition(i, &row, &col, &rowSpan, &colSpan);
        items.append({row, col, i, layout->itemAt(i)});
    }
    std::stable_sort(items.begin(), items.end(),
                     [](const Placed &a, const Placed &b) { return std::tie(a.row, a.col) < std::tie(b.row, b.col); });
    for (const Placed &p : std::as_const(items)) {
        if (QWidget *w = p.item->widget())
            visit(w, out);
        else if (QLayout *inner = p.item->layout())
            collect(inner, out);
    }
}

class FirstShow final : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show) {
            auto *dialog = qobject_cast<QDialog *>(watched);
            if (dialog && !dialog->property(kOrdered).toBool()) {
                dialog->setProperty(kOrdered, true);
                gpTabOrder_follow_layout(dialog);
            }
        }
        return false;
    }

private:
    static constexpr const char *kOrdered = "qlnTabOrdered";
};

} // namespace

QList<QWidget *> gfTabOrder_layout(QWidget *form)
{
    QList<QWidget *> order;
    if (form && form->layout())
        collect(form->layout(), order);
    return order;
}

void gpTabOrder_follow_layout(QWidget *form)
{
    const QList<QWidget *> order = gfTabOrder_layout(form);
    for (qsizetype i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order[i - 1], order[i]);
}

void gpTabOrder_install()
{
    static FirstShow *filter = nullptr;
    if (filter || !qApp)
        return;
    filter = new FirstShow(qApp);
    qApp->installEventFilter(filter);
}

} // namespace qln
