"""The SMS gateway over real HTTP; start and end of the program. tests/dispatch tells what special numbers answer."""
import http.client
import signal
import subprocess
import tempfile
import unittest
import urllib.error

from support import PROGRAM, Sandbox, SandboxTest

ACCOUNT = "ClientCode=HILL&ClientAuth=secret"


class GatewayTest(SandboxTest):
    arguments = ("--credits", "100", "--delay", "0.2")

    def setUp(self):
        super().setUp()
        self.http = self.connect()

    def connect(self, timeout=20):
        connection = http.client.HTTPConnection("127.0.0.1", self.sandbox.port["http"], timeout=timeout)
        self.addCleanup(connection.close)
        return connection

    def get(self, path, connection=None):
        connection = connection or self.http
        connection.request("GET", path)
        answer = connection.getresponse()
        return answer.status, answer.read().decode("latin-1")

    def send(self, to="07700900123", message="Hello", account=ACCOUNT, connection=None):
        return self.get(f"/sms/send_sms.asp?{account}&_To={to}&_From=Hill%20Garage&_Message={message}", connection)

    def last(self):
        return self.sandbox.lines("texts.jsonl")[-1]

    def test_accepted_text_is_charged_numbered_and_recorded(self):
        self.assertEqual(self.send(), (200, '"1"|"99"|"1001"|"0"|'))
        self.assertEqual(self.send(message="x" * 160), (200, '"1"|"98"|"1002"|"0"|'))
        self.assertEqual(self.send(message="x" * 161), (200, '"1"|"96"|"1003"|"0"|'))
        self.assertEqual(self.send(message="x" * 307), (200, '"1"|"93"|"1004"|"0"|'))
        self.assertEqual(self.get(f"/sms/verifyclient.asp?{ACCOUNT}"), (200, '"1"|"93"|'))
        record = self.last()
        del record["time"]
        connection = record.pop("connection")
        self.assertEqual(record, {
            "number": 4, "client": "HILL", "from": "Hill Garage", "to": "07700900123", "message": "x" * 307,
            "outcome": "accepted", "detail": "", "id": 1004, "credits": 3, "balance": 93})
        self.assertEqual({text["connection"] for text in self.sandbox.lines("texts.jsonl")}, {connection})

    def test_text_is_read_byte_by_byte(self):
        for sent, read in [("%C2%A35%20off", "£5 off"), ("caf%E9", "café"), ("%80%99", "€™"), ("%81", "\x81"),
                           ("a%0D%0Ab", "a\r\nb"), ("a%26b%3D%2B%25", "a&b=+%"), ("a+b", "a b"), ("%C3%A9", "Ã©"),
                           ("100%", "100%"), ("%zz", "%zz"), ("%3Cb%3E", "<b>")]:
            with self.subTest(sent):
                self.assertEqual(self.send(message=sent)[0], 200)
                self.assertEqual(self.last()["message"], read)

    def test_a_number_is_known_in_every_form(self):
        for number in ["07700%20900933", "%2B447700900933", "00447700900933", "%2B44%20(0)7700-900933"]:
            self.assertEqual(self.send(number)[1], '"1"|"100"|"0"|"33"|', number)

    def test_bad_requests(self):
        for account in ["ClientCode=&ClientAuth=x", "ClientCode=x", "ClientCode=refused&ClientAuth=x"]:
            self.assertEqual(self.send(account=account)[1], '"0"|"0"|"0"|"0"|', account)
            self.assertEqual(self.get(f"/sms/verifyclient.asp?{account}")[1], '"0"|"0"|', account)
        self.assertEqual(self.send(to="none")[1], '"1"|"100"|"0"|"33"|')
        self.assertEqual(self.send(message="")[1], '"1"|"100"|"0"|"3"|')
        self.assertEqual(self.get("/other")[0], 404)
        self.http.putrequest("POST", "/sms/send_sms.asp")
        self.http.endheaders()
        self.assertEqual(self.http.getresponse().status, 405)

    def test_credits_run_out(self):
        self.sandbox.api("credits", {"credits": 2})
        self.assertEqual(self.send(message="x" * 307)[1], '"2"|"2"|"0"|"0"|')
        self.assertEqual(self.send(message="x" * 200)[1], '"1"|"0"|"1001"|"0"|')
        self.assertEqual(self.send()[1], '"2"|"0"|"0"|"0"|')

    def test_steering_at_run_time(self):
        self.sandbox.api("steer", {"numbers": {"+44 7700 900123": "code 33", "07700900900": "ok",
                                               "07700900124": 'reply "1"|"7"'}, "credit_query": "one field"})
        self.assertEqual(self.send("07700900123")[1], '"1"|"100"|"0"|"33"|')
        self.assertEqual(self.send("07700900900")[1], '"1"|"99"|"1001"|"0"|')
        self.assertEqual(self.send("07700900124")[1], '"1"|"7"')
        self.assertEqual(self.get(f"/sms/verifyclient.asp?{ACCOUNT}")[1], '"1"')
        for wrong in [{"numbers": {"1": "explode"}}, {"number": {}}, {"delay": -1}, {"recipients": {"a@b": "250 OK"}}, []]:
            with self.assertRaises(urllib.error.HTTPError) as caught:
                self.sandbox.api("steer", wrong)
            self.assertEqual(caught.exception.code, 400)
            caught.exception.close()
        self.sandbox.api("steer", {})
        self.assertEqual(self.send("07700900123")[1], '"1"|"98"|"1002"|"0"|')


class ProgramTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def start(self, *arguments):
        sandbox = Sandbox(self.folder, *arguments)
        self.addCleanup(sandbox.end)
        return sandbox

    def test_ready_line_and_ends_cleanly(self):
        for number in (signal.SIGTERM, signal.SIGINT):
            sandbox = self.start()
            self.assertRegex(sandbox.ready, rf"^sandbox ready http=\d+ smtp=\d+ smtps=\d+ page=\d+ folder={self.folder}\n$")
            sandbox.process.send_signal(number)
            self.assertEqual(sandbox.process.wait(), 0)

    def test_only_the_given_account(self):
        port = self.start("--client", "HILL", "--password", "right").port["http"]
        for account, status in [("HILL&ClientAuth=right", "1"), ("HILL&ClientAuth=wrong", "0"), ("hill&ClientAuth=right", "0")]:
            connection = http.client.HTTPConnection("127.0.0.1", port)
            connection.request("GET", f"/sms/verifyclient.asp?ClientCode={account}")
            self.assertEqual(connection.getresponse().read()[:4], f'"{status}"|'.encode())
            connection.close()

    def test_goes_on_where_it_ended_and_keeps_the_folder_to_itself(self):
        for number in (1, 2):
            sandbox = self.start()
            connection = http.client.HTTPConnection("127.0.0.1", sandbox.port["http"])
            connection.request("GET", f"/sms/send_sms.asp?{ACCOUNT}&_To=07700900123&_From=x&_Message=x")
            self.assertIn(f'"{1000 + number}"', connection.getresponse().read().decode())
            connection.close()
            self.assertEqual([text["number"] for text in sandbox.api("texts")], list(range(1, number + 1)))
            second = subprocess.run([PROGRAM, "--folder", self.folder], capture_output=True, text=True)
            self.assertEqual((second.returncode, second.stdout), (1, ""))
            self.assertIn("another sandbox", second.stderr)
            sandbox.process.terminate()
            sandbox.process.wait()

    def test_ends_with_its_parent(self):
        # The parent prints the ready line of its sandbox and ends; the pipe closes once the sandbox has ended too.
        script = ("import subprocess, sys; p = subprocess.Popen(sys.argv[1:], stdout=subprocess.PIPE, text=True);"
                  "print(p.stdout.readline())")
        done = subprocess.run(["/usr/bin/python3", "-W", "ignore", "-c", script, PROGRAM, "--folder", self.folder,
                               "--with-parent"], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=30)
        self.assertIn("sandbox ready", done.stdout)
        self.assertEqual(done.stderr, "")


if __name__ == "__main__":
    unittest.main()
