// Entry point of tds_server.

#include <CLI/CLI.hpp>
#include <QFileInfo>
#include <cstdio>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

#include "hostdb/database_upgrade.h"
#include "platform/clock.h"
#include "tds_server/certificates.h"
#include "tds_server/commands.h"
#include "tds_server/server.h"

namespace {

struct Options {
  std::string folder;
  int port = 0;
  std::string tlsFolder;
  std::string tlsName = "localhost";
  std::string trace;
};

std::unique_ptr<qbx::tds::TlsIdentity> MakeIdentity(const Options& options) {
  if (options.tlsFolder.empty()) return nullptr;
  const qbx::tds::CertificateFiles files = qbx::tds::MakeCertificates(QString::fromLocal8Bit(options.tlsFolder.c_str()),
                                                                      QString::fromLocal8Bit(options.tlsName.c_str()));
  return std::make_unique<qbx::tds::TlsIdentity>(files.certificate, files.key);
}

/// Writes each request as a line of a file.
std::function<void(int client, const QString& request)> Tracer(const std::string& path) {
  const std::shared_ptr<std::FILE> file(std::fopen(path.c_str(), "w"), [](std::FILE* open) {
    if (open != nullptr) std::fclose(open);
  });
  if (!file) throw qbx::tds::ProtocolError("the file of requests cannot be written");
  return [file](int client, const QString& request) {
    std::fprintf(file.get(), "%d %s\n", client, request.simplified().toUtf8().constData());
    std::fflush(file.get());
  };
}

void Run(const Options& options) {
  const QString folder = QString::fromLocal8Bit(options.folder.c_str());
  if (!QFileInfo(folder).isDir()) throw std::runtime_error("there is no folder " + options.folder);
  const qbx::SystemClock clock;
  const std::unique_ptr<qbx::tds::TlsIdentity> identity = MakeIdentity(options);
  qbx::EmbeddedEngine engine(folder, clock, qbx::KeepUpToDate);
  qbx::tds::Server server(engine, options.port, identity.get());
  if (!options.trace.empty()) server.OnRequest(Tracer(options.trace));
  std::printf("tds_server ready port=%d\n", server.Port());
  std::fflush(stdout);
  std::string line;
  while (std::getline(std::cin, line)) {
    std::fputs(CarryOutCommand(server, QByteArray::fromStdString(line)).constData(), stdout);
    std::fflush(stdout);
  }
}

}  // namespace

int main(int argc, char** argv) {
  qbx::SettleTimeZone();
  Options options;
  CLI::App app("Speaks the protocol of SQL Server (TDS 7.4) on loopback, in front of the databases of a folder.",
               "tds_server");
  app.add_option("--folder", options.folder, "the program folder with the database files")->required();
  app.add_option("--port", options.port, "where to listen; 0: at any free port");
  app.add_option(
      "--tls", options.tlsFolder,
      "encrypts, with a certificate that is made in this folder; authority.pem is what clients have to trust");
  app.add_option("--tls-name", options.tlsName, "the host that the certificate is for");
  app.add_option("--trace", options.trace,
                 "writes each request into this file, one a line, the number of the client in front");
  app.footer(qbx::tds::kCommandHelp);
  CLI11_PARSE(app, argc, argv);
  try {
    Run(options);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "tds_server: %s\n", error.what());
    return 1;
  }
  return 0;
}
