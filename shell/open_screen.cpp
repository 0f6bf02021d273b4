#include "shell/open_screen.h"

#include "platform/controls/form.h"
#include "platform/text.h"

namespace veldran::shell {
namespace {

/// The menu entry as the contract hands it to the component.
class MenuEntryObject final : public services::Object {
public:
    explicit MenuEntryObject(MenuEntry entry) : entry_(std::move(entry)) {}

    Value GetProperty(std::string_view name) const override {
        if (equalsIgnoringAsciiCase(name, "Caption")) {
            return entry_.caption;
        }
        if (equalsIgnoringAsciiCase(name, "MenuModulo")) {
            return entry_.module;
        }
        if (equalsIgnoringAsciiCase(name, "MenuPadre")) {
            return entry_.parent;
        }
        if (equalsIgnoringAsciiCase(name, "MenuProg")) {
            return entry_.program;
        }
        return Object::GetProperty(name);
    }

private:
    MenuEntry entry_;
};

} // namespace

OpenScreen::OpenScreen(Host& host, const ComponentLibrary& library, QMdiArea& area, MenuEntry entry)
    : host_(host), entry_(std::move(entry)), windows_(area,
                                                      [this] {
                                                          if (onGone) {
                                                              onGone();
                                                          }
                                                      }),
      navigator_(std::make_shared<ScreenNavigator>()),
      global_(std::make_shared<HostGlobal>(host, *host.current(), *navigator_, windows_)),
      component_(library.create(entry_.className)) {}

OpenScreen::~OpenScreen() {
    // Whoever still holds the component must not reach this screen's objects through it. Its reference to
    // itself owns nothing and goes with them.
    component_->SetActiveNavigator(nullptr);
    component_->SetClsGlobal(nullptr);
    component_->SetActiveDll(nullptr);
}

void OpenScreen::show(std::intptr_t mainWindow) {
    const UserRights& rights = host_.file().rights;
    component_->SetClsGlobal(global_);
    component_->SetActiveNavigator(navigator_);
    component_->SetClsVoceMenu(std::make_shared<MenuEntryObject>(entry_));
    component_->LetCanInsert(toVariantBool(rights.insert));
    component_->LetCanDelete(toVariantBool(rights.remove));
    component_->LetCanUpdate(toVariantBool(rights.update));
    component_->LetCanQbe(toVariantBool(rights.query));
    component_->LetWindowState(controls::windowNormal);
    component_->LetWindowModal(variantFalse);
    component_->LetMenuModulo(entry_.module);
    component_->LetMenuPadre(entry_.parent);
    component_->LetMenuProg(entry_.program);
    component_->LetCaption(entry_.caption);
    component_->LethwndParent(mainWindow);
    component_->LetTop(0);
    component_->LetLeft(0);
    component_->LetIsActive(variantTrue);
    component_->LetIsCalled(variantFalse);
    component_->ShowForm();
}

bool OpenScreen::close() {
    return component_->CloseForm().toBool();
}

} // namespace veldran::shell
