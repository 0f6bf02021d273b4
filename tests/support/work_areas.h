#pragma once

#include "host/aree_di_lavoro.h"
#include "platform/controls/form.h"
#include "tests/support/host_fakes.h"
#include "tests/support/message_recorder.h"

#include <memory>
#include <string>
#include <vector>

namespace veldran::test {

/// What the form's work areas are told of the company.
struct WorkAreasContext {
    std::string connectionString;
    std::string ditta;
    std::int32_t chart = 0;
    std::int16_t levels = 0;
};

/// The form's work areas on the form's own controls, without the form: routines can be called one by one.
class WorkAreas {
public:
    /// \param database an open connection. Shared: commands keep it.
    WorkAreas(std::shared_ptr<ado::Connection> database, WorkAreasContext context);
    ~WorkAreas();
    WorkAreas(const WorkAreas&) = delete;
    WorkAreas& operator=(const WorkAreas&) = delete;

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
