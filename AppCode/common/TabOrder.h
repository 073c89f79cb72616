#pragma once
#include <QList>

class QWidget;

namespace qln {

// The controls of a window in the order its layout reads: boxes in their order, grids row by
// row, a frame's controls where the frame stands. Controls outside any layout are left out.
QList<QWidget *> gfTabOrder_layout(QWidget *form);

// Tab walks a window's controls in its layout's order.
void gpTabOrder_follow_layout(QWidget *form);

// Every dialog takes its layout's order when it first shows.
void gpTabOrder_install();

} // namespace qln
