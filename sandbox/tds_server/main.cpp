// Entry point of tds_server.

#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>
#include <string>

#include "hostdb/database_upgrade.h"
#include "platform/clock.h"
#include "tds_server/server.h"

int main(int argc, char** argv) {
  qbx::SettleTimeZone();
  std::string folder;
  int port = 0;
  CLI::App app("Speaks the protocol of SQL Server (TDS 7.4) on loopback, in front of the databases of a folder.",
               "tds_server");
  app.add_option("--folder", folder, "the program folder with the database files")->required();
  app.add_option("--port", port, "where to listen; 0: at any free port");
  CLI11_PARSE(app, argc, argv);
  try {
    const qbx::SystemClock clock;
    qbx::EmbeddedEngine engine(QString::fromLocal8Bit(folder.c_str()), clock, qbx::KeepUpToDate);
    qbx::tds::Server server(engine, port);
    std::printf("tds_server ready port=%d\n", server.Port());
    std::fflush(stdout);
    std::string line;
    while (std::getline(std::cin, line)) {
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "tds_server: %s\n", error.what());
    return 1;
  }
  return 0;
}
