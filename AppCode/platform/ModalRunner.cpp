#include "platform/ModalRunner.h"

#include <QDialog>

#include <utility>

namespace qln {
namespace {
ModalScript &installedScript()
{
    static ModalScript script;
    return script;
}
} // namespace

int gfiForm_show_modal(QDialog &form)
{
    const ModalScript script = installedScript();
    if (!script)
        return form.exec();
    form.show();
    form.activateWindow();
    script(form);
    if (form.isVisible())
        form.reject();
    return form.result();
}

ScopedModalScript::ScopedModalScript(ModalScript script)
    : m_previous(std::exchange(installedScript(), std::move(script)))
{
}

ScopedModalScript::~ScopedModalScript() { installedScript() = std::move(m_previous); }

} // namespace qln
