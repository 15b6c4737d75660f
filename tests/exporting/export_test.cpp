// Files of exported rows: CSV byte for byte, workbooks as another program reads them back.

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <csignal>
#include <cstring>

#include "exporting/export_file.h"
#include "support/temp_folder.h"

namespace qbx::test {
namespace {

class HeldSource : public RowSource {
 public:
  HeldSource(std::vector<Column> columns, std::vector<std::vector<Cell>> rows)
      : columns_(std::move(columns)), rows_(std::move(rows)) {}
  [[nodiscard]] const std::vector<Column>& Columns() const override { return columns_; }
  bool Next() override { return ++row_ < rows_.size(); }
  [[nodiscard]] Cell At(int column) const override { return rows_[row_][static_cast<std::size_t>(column)]; }

 private:
  std::vector<Column> columns_;
  std::vector<std::vector<Cell>> rows_;
  std::size_t row_ = static_cast<std::size_t>(-1);
};

constexpr qint64 kDay = 86'400'000;

Cell Of(ValueType type, qint64 integer, quint8 scale = 0) {
  return {.type = type, .integer = integer, .utf8 = {}, .scale = scale};
}
Cell Text(std::string_view text) {
  return {.type = ValueType::kText, .utf8 = text};
}

/// Files take no more than so many bytes while this lives.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit = {bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, signal_);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit before_ = {};
  void (*signal_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

class Export : public testing::Test {
 protected:
  ExportOutcome Write(ExportFormat format, const char* name, const ExportOptions& options = {},
                      const ExportProgress& progress = {}) {
    ExportSheet sheet{.title = "Spring [a/b] \"offer\" of this year", .columns = {}, .rows = rows_};
    for (int i = 0; i < 5; ++i)
      sheet.columns.push_back(MakeExportColumn(rows_.Columns(), i, rows_.Columns()[static_cast<std::size_t>(i)].name));
    return WriteExport(sheet, format, folder_.File(QLatin1String(name)), options, progress);
  }

  [[nodiscard]] QByteArray ReadBack(const char* name) const {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QStringLiteral(QBX_READ_WORKBOOK), {folder_.File(QLatin1String(name))});
    EXPECT_TRUE(process.waitForFinished());
    return process.readAllStandardOutput().trimmed();
  }

  TempFolder folder_;
  const std::string long_ = std::string(40'000, 'x');
  const Recordset rows_ = Recordset::ReadAll(std::make_unique<HeldSource>(
      std::vector<Column>{{.name = "N"},
                          {.name = "Price", .type = ValueType::kDecimal, .scale = 2},
                          {.name = "Day", .type = ValueType::kDateTime},
                          {.name = "Tick", .type = ValueType::kBool},
                          {.name = "=A \"b\""}},
      std::vector<std::vector<Cell>>{
          {Of(ValueType::kInt, -5), Of(ValueType::kDecimal, -5, 2), Of(ValueType::kDateTime, 0),
           Of(ValueType::kBool, 1), Text("=1+1")},
          {Of(ValueType::kInt, (qint64{1} << 53) + 1), Of(ValueType::kDecimal, 1250, 2),
           Of(ValueType::kDateTime, kDay + 3'723'000), Of(ValueType::kBool, 0), Text("a,\"b\"\r\nc")},
          {{}, {}, {}, {}, {}},
          {Text("-x"),
           Of(ValueType::kDecimal, 7, 0),
           Of(ValueType::kDateTime, -30'000 * kDay),
           {},
           Text("\xF0\x9F\x9A\x97\x01_x0041_")},
          {Text("+44 7700"), {}, Of(ValueType::kDateTime, -25'509 * kDay), {}, Text(long_)}}));
};

TEST_F(Export, WritesCsvByteForByte) {
  ASSERT_EQ(Write(ExportFormat::kCsv, "a.csv", {.headings = true, .formulaSafe = true}).error, QString());
  EXPECT_EQ(folder_.Read("a.csv").replace(QByteArray(long_.c_str()), "LONG"),
            "\xEF\xBB\xBF\"N\",\"Price\",\"Day\",\"Tick\",\"'=A \"\"b\"\"\"\r\n"
            "\"-5\",\"-0.05\",\"01/01/1970\",\"1\",\"'=1+1\"\r\n"
            "\"9007199254740993\",\"12.50\",\"02/01/1970 01:02:03\",\"0\",\"a,\"\"b\"\"\r\nc\"\r\n"
            "\"\",\"\",\"\",\"\",\"\"\r\n"
            "\"'-x\",\"7\",\"12/11/1887\",\"\",\"\xF0\x9F\x9A\x97\x01_x0041_\"\r\n"
            "\"+44 7700\",\"\",\"28/02/1900\",\"\",\"LONG\"\r\n");
}

TEST_F(Export, WritesWorkbooksThatOthersRead) {
  for (const auto& [format, name] :
       {std::pair(ExportFormat::kXlsx, "a.xlsx"), std::pair(ExportFormat::kXls, "a.xls")}) {
    SCOPED_TRACE(name);
    const ExportOutcome outcome = Write(format, name);
    ASSERT_EQ(outcome.error, QString());
    EXPECT_EQ(outcome.cutTexts, 1);
    EXPECT_EQ(
        ReadBack(name).replace(QByteArray(32'767, 'x'), "LONG").toStdString(),
        R"({"name": "QBX Data - Spring -a-b- \"offer\"", "frozen": "A2", "filter": "A1:E6", "titles": "$1:$1", "rows": [)"
        R"([["s", "N"], ["s", "Price"], ["s", "Day"], ["s", "Tick"], ["s", "=A \"b\""]], )"
        R"([["n", -5], ["n", -0.05], ["d", "01/01/1970 00:00:00|dd/mm/yyyy"], ["b", true], ["s", "=1+1"]], )"
        R"([["s", "9007199254740993"], ["n", 12.5], ["d", "02/01/1970 01:02:03|dd/mm/yyyy hh:mm:ss"], ["b", false], ["s", "a,\"b\"\nc"]], )"
        R"([["n", null], ["n", 0], ["n", null], ["b", false], ["n", null]], )"
        R"([["s", "-x"], ["n", 7], ["s", "12/11/1887"], ["b", false], ["s", "\ud83d\ude97\u0001_x0041_"]], )"
        R"([["s", "+44 7700"], ["n", 0], ["d", "28/02/1900 00:00:00|dd/mm/yyyy"], ["b", false], ["s", "LONG"]]]})");
  }
}

// Texts around the size of a record, so many that the table of sectors outgrows the header of the file.
TEST_F(Export, ParksTextsOfAnyLengthInARecordAfterTheOther) {
  std::vector<std::string> texts;
  for (const std::size_t length : std::initializer_list<std::size_t>{1, 2, 4105, 4106, 4107, 8209, 8210, 8211, 8212,
                                                                     8213, 8214, 16'436, 16'437, 32'766}) {
    for (const char* repeated : {"x", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x9A\x97"}) {
      std::string text = length % 2 == 0 ? "a" : "";
      for (std::size_t i = 0; i < length / (repeated[0] == '\xF0' ? 2 : 1); ++i)
        text += repeated;
      for (int i = 0; i < 12; ++i)
        texts.push_back(text);
    }
  }
  std::vector<std::vector<Cell>> cells;
  cells.reserve(texts.size());
  for (const std::string& text : texts)
    cells.push_back({Text(text)});
  const Recordset rows = Recordset::ReadAll(std::make_unique<HeldSource>(std::vector<Column>{{.name = "T"}}, cells));
  const ExportSheet sheet{.title = {}, .columns = {MakeExportColumn(rows.Columns(), 0, "T")}, .rows = rows};
  ASSERT_EQ(WriteExport(sheet, ExportFormat::kXls, folder_.File("t.xls"), {}, {}).error, QString());
  ASSERT_GT(folder_.Read("t.xls").size(), 109 * 128 * 512);
  const QJsonArray read = QJsonDocument::fromJson(ReadBack("t.xls")).object()[u"rows"].toArray();
  ASSERT_EQ(read.size(), static_cast<qsizetype>(texts.size()) + 1);
  for (std::size_t i = 0; i < texts.size(); ++i)
    EXPECT_TRUE(read[static_cast<qsizetype>(i) + 1][0][1].toString().toStdString() == texts[i]) << i;
}

TEST_F(Export, LeavesWhatWasThereWhenItFailsOrIsCancelled) {
  for (const ExportFormat format : {ExportFormat::kCsv, ExportFormat::kXlsx, ExportFormat::kXls}) {
    SCOPED_TRACE(static_cast<int>(format));
    folder_.Write("kept", "older");
    EXPECT_EQ(Write(format, "kept", {}, [](qint64) { return false; }).end, ExportEnd::kCancelled);
    EXPECT_EQ(folder_.Read("kept"), "older");
    const ExportOutcome failed = Write(format, "none/x");
    EXPECT_EQ(failed.end, ExportEnd::kFailed);
    EXPECT_FALSE(failed.error.isEmpty());
    const FullDisk disk(20'000);
    EXPECT_EQ(Write(format, "kept").error, QString::fromLatin1(std::strerror(EFBIG)));
    EXPECT_EQ(folder_.Names(), QStringList{"kept"});
  }
}

}  // namespace
}  // namespace qbx::test
