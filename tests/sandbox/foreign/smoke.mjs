// Tests tds_server with a JavaScript client: node smoke.mjs PORT. Exits with 1 after the first difference.
import assert from "node:assert/strict";
import { Connection, Request, TYPES } from "tedious";

const port = Number(process.argv[2]);

function connect(password, encrypt) {
  return new Promise((done, failed) => {
    const connection = new Connection({
      server: "127.0.0.1",
      authentication: { type: "default", options: { userName: "sa", password } },
      options: { port, database: "QBXKorvelManager", encrypt, trustServerCertificate: true, connectTimeout: 20000, rowCollectionOnRequestCompletion: true },
    });
    connection.connect((error) => (error ? failed(error) : done(connection)));
  });
}

/// Runs one request; `how` is execSql, execSqlBatch, callProcedure or prepare.
function ask(connection, how, text, parameters = []) {
  return new Promise((done, failed) => {
    const request = new Request(text, (error, count, rows) =>
      error ? failed(error) : done({ count, outputs, rows: rows.map((row) => row.map((cell) => cell.value)) }));
    const outputs = {};
    request.on("returnValue", (name, value) => (outputs[name] = value));
    for (const [name, type, value, options] of parameters) request.addParameter(name, type, value, options);
    connection[how](request);
  });
}

const connection = await connect("secret", true);
const long = "é€😀".repeat(200000);
await ask(connection, "execSqlBatch", "CREATE TABLE Smoke (N int, T nvarchar(max), M money, D datetime, B bit, F float)");
const inserted = await ask(connection, "execSql", "INSERT INTO Smoke VALUES (@n, @t, @m, @d, @b, @f)", [
  ["n", TYPES.Int, 7], ["t", TYPES.NVarChar, long], ["m", TYPES.Decimal, 12.5, { precision: 9, scale: 2 }], ["d", TYPES.DateTime, new Date("2024-03-05T14:06:07Z")],
  ["b", TYPES.Bit, true], ["f", TYPES.Float, 0.25]]);
assert.equal(inserted.count, 1);
await ask(connection, "execSql", "INSERT INTO Smoke (N) VALUES (8)");
const read = await ask(connection, "execSqlBatch", "SELECT N, T, M, D, B, F FROM Smoke ORDER BY N");
assert.ok(read.rows[0].splice(1, 1)[0] === long);
assert.deepEqual(read.rows, [[7, 12.5, new Date("2024-03-05T14:06:07Z"), true, 0.25], [8, null, null, null, null, null]]);
const two = await ask(connection, "execSqlBatch", "SELECT 1 AS A; UPDATE Smoke SET N = N + 1; SELECT N'x' AS B");
assert.equal(two.rows.length, 2);
const called = await ask(connection, "callProcedure", "proc__OptionVersion");
assert.equal(called.rows.length, 1);

await assert.rejects(ask(connection, "execSqlBatch", "SELECT Absent FROM Smoke"), { number: 207, class: 16 });
await assert.rejects(ask(connection, "callProcedure", "proc_none"), { number: 2812, class: 16 });
await assert.rejects(ask(connection, "callProcedure", "proc__OptionVersion", [["none", TYPES.Int, 1]]), { number: 8145 });

await new Promise((done, failed) => connection.beginTransaction((error) => (error ? failed(error) : done())));
await ask(connection, "execSqlBatch", "DELETE FROM Smoke");
await new Promise((done, failed) => connection.rollbackTransaction((error) => (error ? failed(error) : done())));
assert.equal((await ask(connection, "execSqlBatch", "SELECT N FROM Smoke")).rows.length, 2);

// A cancelling stops the running statement and keeps the connection.
const endless = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT count(*) FROM n";
setTimeout(() => connection.cancel(), 300);
await assert.rejects(ask(connection, "execSqlBatch", endless), { code: "ECANCEL" });
assert.deepEqual((await ask(connection, "execSql", "SELECT @a AS A", [["a", TYPES.NVarChar, "it's"]])).rows, [["it's"]]);
connection.close();
await assert.rejects(connect("wrong", false), /Login failed/);
console.log("tedious: all as expected");
