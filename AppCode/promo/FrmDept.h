#pragma once
#include <QDialog>

class QPushButton;

namespace qln {

class FlexGrid;

// The department picker: every department in code order, its level shown by indent and
// colour. Accept leaves the chosen code and name in the Departments buffer, Cancel a blank code.
class FrmDept final : public QDialog {
public:
    explicit FrmDept(QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void mpGrid_fill();
    void mpDept_accept();
    void mpDept_cancel();

    FlexGrid *fgrdItems = nullptr;
    QPushButton *CmdExit[2] = {};
};

} // namespace qln
