#pragma once
#include <functional>

class QDialog;

namespace qln {

// Every form is shown modally through here, so that tests can play the user: a script,
// while installed, receives each form shown instead of the event loop, and closes it.
int gfiForm_show_modal(QDialog &form);

using ModalScript = std::function<void(QDialog &form)>;

// Installs a script for its lifetime (and puts back the one before it). The form is on
// screen while the script runs; a form the script leaves open is rejected.
class ScopedModalScript {
public:
    explicit ScopedModalScript(ModalScript script);
    ~ScopedModalScript();
    ScopedModalScript(const ScopedModalScript &) = delete;
    ScopedModalScript &operator=(const ScopedModalScript &) = delete;

private:
    ModalScript m_previous;
};

} // namespace qln
