"""tds_server, tested with two independent clients."""
import json
import re
import subprocess
import sys
import tempfile
import unittest
from decimal import Decimal
from pathlib import Path

import pytds

PROGRAMS = Path(sys.argv.pop(1))
HERE = Path(__file__).resolve().parent
DATABASE = "QBXKorvelManager"


class TdsServer(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        subprocess.run([PROGRAMS / "marketingctl", "init", cls.folder.name], check=True, stdout=subprocess.DEVNULL)
        cls.server = subprocess.Popen([PROGRAMS / "tds_server", "--folder", cls.folder.name, "--tls", cls.folder.name],
                                      stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        cls.addClassCleanup(cls.server.communicate)
        cls.port = int(re.search(r"port=(\d+)", cls.server.stdout.readline()).group(1))
        with cls.connect() as connection, connection.cursor() as cursor:
            cursor.execute("CREATE TABLE _Logins(Login nvarchar(50), Password nvarchar(50)); INSERT INTO _Logins VALUES ('sa', 'secret')")

    def tell(self, **command):
        print(json.dumps(command), file=self.server.stdin, flush=True)
        return json.loads(self.server.stdout.readline())

    @classmethod
    def connect(cls):
        return pytds.connect("127.0.0.1", DATABASE, "sa", "secret", port=cls.port, autocommit=True, login_timeout=3)

    def test_a_python_client_reads_and_writes(self):
        long = "é€😀" * 100000
        with self.connect() as connection, connection.cursor() as cursor:
            cursor.execute("CREATE TABLE Kinds (N smallint, T ntext, M money, D decimal(9,2), W smalldatetime, B bit)")
            cursor.execute("INSERT INTO Kinds VALUES (%s, %s, %s, %s, %s, %s)", (-3, long, Decimal("-1.2345"), Decimal("7.25"), "2024-03-05 14:06:00", True))
            self.assertEqual(cursor.rowcount, 1)
            cursor.execute("INSERT INTO Kinds (N) VALUES (NULL)")
            cursor.execute("SELECT * FROM Kinds")
            first, second = cursor.fetchall()
            self.assertTrue(first[1] == long)
            self.assertEqual(first[:1] + first[2:4] + first[5:], (-3, Decimal("-1.2345"), Decimal("7.25"), True))
            self.assertEqual(str(first[4]), "2024-03-05 14:06:00")
            self.assertEqual(second, (None,) * 6)
            cursor.callproc("proc__OptionVersion")
            self.assertEqual(len(cursor.fetchall()), 1)
            cursor.execute("CREATE TABLE Keys (K int PRIMARY KEY)")
            cursor.execute("INSERT INTO Keys VALUES (1)")
            with self.assertRaisesRegex(pytds.Error, "PRIMARY KEY") as caught:
                cursor.execute("INSERT INTO Keys VALUES (1)")
            self.assertEqual((caught.exception.number, caught.exception.severity), (2627, 14))
            cursor.execute("BEGIN TRAN; DELETE FROM Keys; SELECT @@TRANCOUNT AS N")
            while cursor.description is None:
                cursor.nextset()
            self.assertEqual(cursor.fetchall(), [(1,)])
            cursor.execute("IF @@TRANCOUNT > 0 ROLLBACK TRAN")
            cursor.execute("SELECT count(*) FROM Keys")
            self.assertEqual(cursor.fetchall(), [(1,)])

    def test_faults_happen_on_demand(self):
        self.tell(fault="wrong-password")
        with self.assertRaisesRegex(pytds.Error, "Login failed"):
            self.connect()
        self.tell(listening=False)
        with self.assertRaises((pytds.Error, OSError)):
            self.connect()
        self.tell(listening=True)
        many = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) SELECT i FROM n"
        for fault in ({"fault": "close", "at": "row", "row": 3000}, {"fault": "reset", "at": "request", "match": "recursive"},
                      {"fault": "close", "at": "answered", "skip": 1}):
            with self.subTest(fault), self.assertRaises((pytds.Error, OSError)), self.connect() as connection, connection.cursor() as cursor:
                self.tell(clear=True)
                self.assertEqual(self.tell(**fault)["faults"], 0)
                for _ in range(2):
                    cursor.execute(many)
                    cursor.fetchall()
            self.assertEqual(self.tell(clear=False)["faults"], 1)
        for wrong in ({"fault": "close", "at": "noon"}, {"fault": "offline", "at": "row"}, {"fault": "slow", "at": "login", "seconds": 1}, {"at": "login"}, {"listening": "no"}):
            self.assertIn("error", self.tell(**wrong), wrong)
        nowhere = subprocess.run([PROGRAMS / "tds_server", "--folder", "/nowhere"], stdin=subprocess.DEVNULL, capture_output=True, text=True)
        self.assertEqual((nowhere.returncode, nowhere.stdout, nowhere.stderr), (1, "", "tds_server: there is no folder /nowhere\n"))
        self.tell(clear=True)

    def test_a_javascript_client_reads_and_writes(self):
        build = PROGRAMS.parent / "npm" / "foreign"
        ended = subprocess.run([HERE.parent / "support" / "with_npm", HERE / "foreign", build, "smoke.mjs", str(self.port)],
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        if ended.returncode == 77:
            self.skipTest(ended.stdout)
        self.assertEqual(ended.returncode, 0, ended.stdout)


if __name__ == "__main__":
    unittest.main()
