// Reads RTF files and stores each anew as an edited letter is stored, for comparison in a word processor.
//
//   rtf_resave IN.rtf OUT.rtf ...     what a letter loses goes to the terminal

#include <QFile>
#include <QGuiApplication>
#include <cstdio>

#include "rtf/rtf_reader.h"
#include "rtf/rtf_writer.h"
#include "util/windows1252.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const QStringList files = QGuiApplication::arguments().mid(1);
  for (qsizetype i = 0; i + 1 < files.size(); i += 2) {
    QFile in(files[i]);
    QFile out(files[i + 1]);
    if (!in.open(QIODevice::ReadOnly) || !out.open(QIODevice::WriteOnly)) return 1;
    QTextDocument document;
    const qbx::RtfLosses losses = qbx::ReadRtf(qbx::FromFileBytes(in.readAll()), document);
    out.write(qbx::WriteRtf(document).toLatin1());
    if (!losses.isEmpty()) std::printf("%s loses %s\n", qPrintable(files[i]), qPrintable(losses.join(u", "_qs)));
  }
  return 0;
}
