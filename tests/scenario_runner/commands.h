// What a scenario can do besides using a control, as objects for Bridge::Add.

#pragma once

#include <QObject>
#include <memory>

namespace qbx::scenario {

class Stage;

/// Windows, controls, keys, the clipboard.
[[nodiscard]] std::unique_ptr<QObject> MakeControlCommands(Stage& stage);
/// The program, and the world around it.
[[nodiscard]] std::unique_ptr<QObject> MakeWorldCommands(Stage& stage);
/// The host database.
[[nodiscard]] std::unique_ptr<QObject> MakeDatabaseCommands(Stage& stage);

}  // namespace qbx::scenario
