#pragma once

#include "host/aree_di_lavoro.h"
#include "platform/controls/form.h"
#include "tests/module/scripted_driver.h"
#include "tests/support/host_fakes.h"
#include "tests/support/message_recorder.h"

#include <memory>
#include <string>

namespace veldran::test {

/// The work areas on the form's own controls, over a scripted database: chart 7 of company "31", four levels.
class WorkAreas {
public:
    WorkAreas();
    ~WorkAreas();

    ScriptedDatabase database;
    std::shared_ptr<MessageLog> messages = std::make_shared<MessageLog>(); // shared with the message service
    ScreenRecorder screen;
    controls::Form form{"FRMCI_VELDRAN"};
    ControlliFormPrincipale controls{form};
    std::shared_ptr<ado::Connection> connection; // shared with commands
    SegnalazioneErrori errors;
    std::unique_ptr<AreeDiLavoro> areas;

    controls::TreeNode& root(int nature) { return *areas->albero.Radice(nature); }
    controls::TreeNode* node(const std::string& key) { return areas->albero.NodoPerChiave(key); }
    /// Labels of the errors reported so far.
    std::vector<std::string> labels() const;
};

} // namespace veldran::test
