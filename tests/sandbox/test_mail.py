"""The mail server over real SMTP: recording, log-in, steering. tests/network tells what special mailboxes do."""
import base64
import smtplib
import ssl
from email.message import EmailMessage

from support import SandboxTest

SENDER = "office@hill.example"


class MailTest(SandboxTest):
    arguments = ("--delay", "0.2")

    def connect(self):
        client = smtplib.SMTP("localhost", self.sandbox.port["smtp"], timeout=20)
        self.addCleanup(client.close)
        client.ehlo()
        return client

    def records(self):
        return self.sandbox.lines("mails.jsonl")

    def test_a_mail_is_recorded_as_it_came(self):
        mail = EmailMessage()
        mail["From"] = '"Hill Garage" <office@hill.example>'
        mail["To"] = "jane@example.com"
        mail["Subject"] = "MOT für Ford & <b>Fiesta</b> – £35 off, while the offer lasts to the end of the month"
        mail.set_content("Dear Jane,\n\n.two dots\n£35 off\n", cte="quoted-printable")
        client = self.connect()
        client.login("hill", "secret")
        client.send_message(mail, to_addrs=["jane@example.com", "joe@example.com"])
        record, = self.records()
        raw = (self.sandbox.folder / record["file"]).read_bytes()
        self.assertEqual(raw, mail.as_bytes().replace(b"\n", b"\r\n"))
        self.assertEqual(
            {key: record[key] for key in ("number", "from", "to", "sender", "subject", "outcome", "tls", "user", "size")},
            {"number": 1, "from": SENDER, "to": ["jane@example.com", "joe@example.com"],
             "sender": '"Hill Garage" <office@hill.example>', "subject": mail["Subject"], "outcome": "accepted", "tls": "",
             "user": "hill", "size": len(raw)})
        self.assertEqual(record["body"], "Dear Jane,\n\n.two dots\n£35 off\n")
        shown = self.sandbox.api("mails/1")
        self.assertEqual(shown["raw"], raw.decode())
        self.assertIn(["Subject", mail["Subject"]], shown["headers"])

    def test_log_in(self):
        for user, password, good in [("hill", "secret", True), ("hill", "wrong", False), ("refused", "secret", False)]:
            plain, login = self.connect(), self.connect()
            code = plain.docmd("AUTH", "PLAIN " + base64.b64encode(f"\0{user}\0{password}".encode()).decode())[0]
            self.assertEqual(code, 235 if good else 535)
            login.user, login.password = user, password
            if good:
                self.assertEqual(login.auth("LOGIN", login.auth_login)[0], 235)
            else:
                with self.assertRaises(smtplib.SMTPAuthenticationError):
                    login.auth("LOGIN", login.auth_login)

    def test_steering_at_run_time(self):
        self.sandbox.api("steer", {"recipients": {"X@y.com": "550 5.7.1 Go away", "z@y.com": "data 451 Later",
                                                  "slow@y.com": "ok"}})
        client = self.connect()
        client.mail(SENDER)
        self.assertEqual(client.rcpt("x@Y.com"), (550, b"5.7.1 Go away"))
        self.assertEqual(client.rcpt("z@y.com")[0], 250)
        self.assertEqual(client.data("x"), (451, b"Later"))
        self.sandbox.api("steer", {})
        self.assertEqual(client.sendmail(SENDER, ["x@y.com", "slow@y.com"], "x"), {})


class StrictMailTest(SandboxTest):
    arguments = ("--auth-needs-tls", "--smtp-user", "hill", "--smtp-password", "right")

    def test_log_in_needs_tls_and_the_given_account(self):
        client = smtplib.SMTP("localhost", self.sandbox.port["smtp"], timeout=20)
        self.addCleanup(client.close)
        self.assertEqual(client.ehlo()[0], 250)
        self.assertNotIn("auth", client.esmtp_features)
        self.assertEqual(client.docmd("AUTH", "PLAIN AGhpbGwAcmlnaHQ=")[0], 538)
        trust = ssl.create_default_context(cafile=self.sandbox.folder / "tls" / "ca.pem")
        client.starttls(context=trust)
        with self.assertRaises(smtplib.SMTPAuthenticationError):
            client.login("hill", "other")
        self.assertEqual(client.login("hill", "right")[0], 235)
        implicit = smtplib.SMTP_SSL("127.0.0.1", self.sandbox.port["smtps"], timeout=20, context=trust)
        self.addCleanup(implicit.close)
        self.assertEqual(implicit.login("hill", "right")[0], 235)
