#pragma once
#include <QDialog>

#include <array>
#include <functional>

namespace qln {

// The menu of promo kinds: five buttons Command1(0) to Command1(4), each opening its window
// modally, and Command2 "Exit".
class FrmMenu final : public QDialog {
public:
    static constexpr int kPromoKinds = 5;
    // What each Command1 button opens, by index.
    using Windows = std::array<std::function<void()>, kPromoKinds>;
    // The result of a menu left by "Exit" (or Esc): the process ends.
    static constexpr int kExit = QDialog::Accepted;

    explicit FrmMenu(Windows windows, QWidget *parent = nullptr);

private:
    void mpWindow_open(int index);
    void mpScreenshot_take(const QString &file);

    Windows m_windows;
};

} // namespace qln
