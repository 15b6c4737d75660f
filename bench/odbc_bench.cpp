// Compares reading through a session with a bare ODBC loop that binds the same columns.
//
//   odbc_bench [ROUNDS [ROWS]]
//
// Reads rows of 30 columns from a server in another process. Prints medians. The two sides run in turn. Elapsed time,
// which is mostly the server's, and processor time of this process are printed.

#include <sql.h>
#include <sqlext.h>

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <array>
#include <optional>

#include "database/odbc/odbc_driver.h"
#include "database/recordset.h"
#include "hostdb/host_database.h"
#include "sqlite/sqlite_file.h"
#include "support/rounds.h"

namespace {

using namespace qbx;
using namespace qbx::bench;

constexpr int kColumns = 30;
constexpr char kSelect[] = "SELECT * FROM Big";

bool IsNumber(int column) {
  return column == 0 || column % 6 == 0;
}
bool IsDate(int column) {
  return column % 6 == 3;
}

/// Two thirds text, one third numbers and dates, as in the rows of a campaign.
void MakeRows(const QString& file, int rows) {
  if (CreateHostDatabase(file, ExistingFile::kRefuse)) Fail("there is no database");
  const SqliteFile database(file, SqliteMode::kExisting);
  QByteArray create = "CREATE TABLE Big(c0 int";
  QByteArray values = "i";
  for (int column = 1; column < kColumns; ++column) {
    create += ", c" + QByteArray::number(column) +
              (IsNumber(column) ? " int"
               : IsDate(column) ? " datetime"
                                : " nvarchar(40)");
    values += IsNumber(column) ? ", i * 7" : IsDate(column) ? ", '2024-02-03 04:05:06'" : ", 'Some text of row ' || i";
  }
  create += "); INSERT INTO Big WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
            QByteArray::number(rows) + ") SELECT " + values + " FROM n";
  ExecuteSql(database.Handle(), create.constData());
}

/// The server. It ends when its standard input ends.
class ServerProcess {
 public:
  explicit ServerProcess(const QString& folder) {
    process_.start(QCoreApplication::applicationDirPath() + QStringLiteral("/tds_server"),
                   {QStringLiteral("--folder"), folder});
    if (!process_.waitForReadyRead()) Fail("the server does not start");
    port_ = process_.readLine().trimmed().split('=').last().toInt();
  }
  ~ServerProcess() {
    process_.closeWriteChannel();
    process_.waitForFinished();
  }
  ServerProcess(const ServerProcess&) = delete;
  ServerProcess& operator=(const ServerProcess&) = delete;
  [[nodiscard]] int Port() const { return port_; }

 private:
  QProcess process_;
  int port_ = 0;
};

/// The comparison: a loop written for these columns. It binds one row and keeps none.
class BareLoop {
 public:
  explicit BareLoop(const QString& connection) {
    ::SQLAllocHandle(SQL_HANDLE_ENV, nullptr, &environment_);
    ::SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    ::SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_);
    std::vector<SQLWCHAR> text = OdbcText(connection);
    if (!SQL_SUCCEEDED(
            ::SQLDriverConnectW(connection_, nullptr, text.data(), SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT)))
      Fail("the bare loop does not connect");
  }
  ~BareLoop() {
    ::SQLDisconnect(connection_);
    ::SQLFreeHandle(SQL_HANDLE_DBC, connection_);
    ::SQLFreeHandle(SQL_HANDLE_ENV, environment_);
  }
  BareLoop(const BareLoop&) = delete;
  BareLoop& operator=(const BareLoop&) = delete;

  int Read() {
    struct Bound {
      std::array<SQLWCHAR, 41> text;
      SQL_TIMESTAMP_STRUCT date;
      qint64 number;
      SQLLEN length;
    };
    std::array<Bound, kColumns> row = {};
    SQLHANDLE statement = nullptr;
    ::SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement);
    for (int column = 0; column < kColumns; ++column) {
      Bound& bound = row[static_cast<std::size_t>(column)];
      const auto number = static_cast<SQLUSMALLINT>(column + 1);
      if (IsNumber(column))
        ::SQLBindCol(statement, number, SQL_C_SBIGINT, &bound.number, sizeof(bound.number), &bound.length);
      else if (IsDate(column))
        ::SQLBindCol(statement, number, SQL_C_TYPE_TIMESTAMP, &bound.date, sizeof(bound.date), &bound.length);
      else
        ::SQLBindCol(statement, number, SQL_C_WCHAR, bound.text.data(), sizeof(bound.text), &bound.length);
    }
    std::vector<SQLWCHAR> select = OdbcText(QString::fromLatin1(kSelect));
    int rows = 0;
    if (SQL_SUCCEEDED(::SQLExecDirectW(statement, select.data(), SQL_NTS)))
      while (SQL_SUCCEEDED(::SQLFetch(statement)))
        ++rows;
    ::SQLFreeHandle(SQL_HANDLE_STMT, statement);
    return rows;
  }

 private:
  SQLHANDLE environment_ = nullptr;
  SQLHANDLE connection_ = nullptr;
};

struct Measure {
  const char* name;
  std::vector<double> elapsed = {};
  std::vector<double> processor = {};

  template <typename Work>
  void Add(const Work& work) {
    const double before = ProcessMilliseconds();
    elapsed.push_back(Milliseconds(work));
    processor.push_back(ProcessMilliseconds() - before);
  }
  void Print() const {
    std::printf("%-44s %8.0f ms elapsed %8.0f ms of processor\n", name, Median(elapsed), Median(processor));
  }
};

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 7;
  const int rows = argc > 2 ? std::atoi(argv[2]) : 100'000;
  const QTemporaryDir folder;
  MakeRows(folder.filePath(QStringLiteral("Bench.db")), rows);
  const ServerProcess server(folder.path());
  const ServerAddress address{.host = QStringLiteral("127.0.0.1"), .instance = {}, .port = server.Port()};
  const Login login{QStringLiteral("sa"), QString()};
  OdbcDriver driver;
  // Each side opens its own connection, because the scheduler treats connections of different ages differently.
  const auto connect = [&] {
    return driver.Connect({QStringLiteral("127.0.0.1,%1").arg(server.Port()), QStringLiteral("Bench")}, login, 10);
  };
  const QString bareConnection = ComposeConnectionString(address, QStringLiteral("Bench"), login, {}).text;
  Measure plain{"bare loop, columns bound, nothing kept"};
  Measure stepped{"rows of the session stepped, nothing kept"};
  Measure ours{"Recordset::ReadAll over the session"};
  for (int round = 0; round < rounds; ++round) {
    std::optional<BareLoop> bare(std::in_place, bareConnection);
    plain.Add([&] {
      if (bare->Read() != rows) Fail("rows are missing");
    });
    bare.reset();
    auto session = connect();
    stepped.Add([&] {
      const auto source = session->Execute(QString::fromLatin1(kSelect));
      int read = 0;
      std::size_t bytes = 0;
      for (; source->Next(); ++read)
        for (int column = 0; column < kColumns; ++column)
          bytes += source->At(column).utf8.size();
      if (read != rows || bytes == 0) Fail("rows are missing");
    });
    session = connect();
    ours.Add([&] {
      const Recordset read = Recordset::ReadAll(session->Execute(QString::fromLatin1(kSelect)));
      if (read.RecordCount() != rows || read.At(rows - 1, 1).utf8.empty()) Fail("rows are missing");
    });
  }
  plain.Print();
  for (const Measure* each : {&stepped, &ours}) {
    each->Print();
    std::printf("  x bare loop: %.2f elapsed, %.2f of processor\n", Median(each->elapsed) / Median(plain.elapsed),
                Median(each->processor) / Median(plain.processor));
  }
  return 0;
}
