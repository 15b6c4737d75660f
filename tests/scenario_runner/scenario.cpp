#include "scenario.h"

#include <QFile>
#include <QFileInfo>
#include <QJSEngine>
#include <QtWidgets/QWidget>

#include "bridge.h"
#include "control_commands.h"
#include "database_commands.h"
#include "find_control.h"
#include "report.h"
#include "stage.h"
#include "window_watch.h"
#include "world_commands.h"

namespace qbx::scenario {
namespace {

// A picture of the screen at a failure tells more than the line.
void TakeFailurePicture(const Stage& stage, const QString& file, int number) {
  const QString picture =
      stage.ScreenshotFile(QStringLiteral("%1-failed-%2").arg(QFileInfo(file).baseName()).arg(number));
  const QList<QWidget*> windows = VisibleWindows();
  if (!picture.isEmpty() && !windows.isEmpty()) windows.constFirst()->grab().save(picture);
}

void LoadPrelude(QJSEngine& engine, Bridge& bridge) {
  QFile prelude(QStringLiteral(":/scenario_runner/prelude.js"));
  if (!prelude.open(QIODevice::ReadOnly)) qFatal("prelude.js is missing");
  const QJSValue function = engine.evaluate(QString::fromUtf8(prelude.readAll()), QStringLiteral("prelude.js"));
  QJSEngine::setObjectOwnership(&bridge, QJSEngine::CppOwnership);
  const QJSValue result = function.call({engine.newQObject(&bridge), engine.globalObject()});
  if (function.isError() || result.isError()) {
    const QJSValue& error = function.isError() ? function : result;
    qFatal("prelude.js:%d: %s", error.property(QStringLiteral("lineNumber")).toInt(), qPrintable(error.toString()));
  }
}

void ReportException(const QJSValue& error, const QStringList& trace, Bridge& bridge, Report& report) {
  if (bridge.Invoke(QStringLiteral("abandoned"), {QVariant::fromValue(error)}).toBool()) return;
  const auto property = [&error](const char* name) { return error.property(QLatin1String(name)); };
  if (!error.isError()) {  // the trace's frames are "function:line:column:file"
    report.FailAt(QStringLiteral("threw ") + error.toString(), trace.value(0).section(QLatin1Char(':'), 1, 1).toInt());
  } else if (property("name").toString() == QLatin1String("SyntaxError")) {
    report.FailAt(error.toString(), property("lineNumber").toInt());
  } else {
    const bool plain = property("name").toString() == QLatin1String("Error");
    report.fail(plain ? property("message").toString() : error.toString(), property("stack").toString());
  }
}

}  // namespace

bool RunScenario(const QString& file, const QString& screenshots, const QString& folder) {
  QJSEngine engine;
  Bridge bridge(engine);
  Stage stage(bridge, screenshots, folder);
  Report report(file, [&stage, file](int number) { TakeFailurePicture(stage, file, number); });
  QFile source(file);
  if (!source.open(QIODevice::ReadOnly)) {
    report.FailAt(QStringLiteral("cannot be read: ") + source.errorString(), 0);
    return false;
  }
  WindowWatch watch(bridge);
  ControlCommands control(stage);
  WorldCommands world(stage);
  DatabaseCommands database(stage);
  for (QObject* commands : std::initializer_list<QObject*>{&control, &world, &database, &report, &watch})
    bridge.Add(*commands);
  LoadPrelude(engine, bridge);

  QStringList trace;
  const QJSValue result = engine.evaluate(QString::fromUtf8(source.readAll()), file, 1, &trace);
  if (!trace.isEmpty() || result.isError()) ReportException(result, trace, bridge, report);
  const int assertions = bridge.Invoke(QStringLiteral("finish")).toInt();
  if (assertions == 0 && report.Failures() == 0) report.FailAt(QStringLiteral("asserts nothing"), 0);
  stage.End();
  return report.Failures() == 0;
}

}  // namespace qbx::scenario
