"""The mail server over real SMTP: log-in, recording, steering, limits. tests/network tells what special mailboxes do."""
import base64
import smtplib
import ssl
from email.message import EmailMessage

from support import SandboxTest

SENDER = "office@hill.example"


def message(subject="Your MOT is due"):
    mail = EmailMessage()
    mail["From"] = '"Hill Garage" <office@hill.example>'
    mail["To"] = "jane@example.com"
    mail["Subject"] = subject
    mail.set_content("Dear Jane,\n\n.two dots\n£35 off\n", cte="quoted-printable")
    return mail


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
        mail = message(subject="MOT für Ford & <b>Fiesta</b> – £35 off, while the offer lasts to the end of the month")
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

    def test_unusual_content_is_read(self):
        html = message()
        html.add_alternative("<p>Hello</p>", subtype="html")
        for raw, subject, body in [
                (html.as_bytes(), "Your MOT is due", "Dear Jane,\n\n.two dots\n£35 off\n"),
                (b"Subject: =?nonsense?q?caf=E9?=\nContent-Type: text/plain; charset=nonsense\n\ncaf\xe9\n", "café", "café\n"),
                (b"Content-Type: text/html\n\n<p>x</p>\n", "", "<p>x</p>\n"),
                (b"no header at all", "", "no header at all\n"), (b"", "", "")]:
            self.connect().sendmail(SENDER, "jane@example.com", raw.replace(b"\n", b"\r\n"))
            self.assertEqual((self.records()[-1]["subject"], self.records()[-1]["body"]), (subject, body))

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

    def test_protocol_limits(self):
        client = self.connect()
        self.assertEqual(client.esmtp_features["size"], str(35 * 1024 * 1024))
        self.assertTrue({"8bitmime", "smtputf8", "starttls", "auth"} <= client.esmtp_features.keys())
        self.assertEqual(client.mail(SENDER, ["SIZE=99999999"])[0], 552)
        self.assertEqual(client.docmd("DATA")[0], 503)
        with self.assertRaises(smtplib.SMTPDataError) as caught:
            client.sendmail(SENDER, "jane@example.com", "x" * 999)
        self.assertEqual(caught.exception.smtp_code, 500)
        client.sendmail(SENDER, "jane@example.com", "x" * 998)
        client.sendmail("büro@hill.example", "jané@example.com", "x", mail_options=["SMTPUTF8"])
        self.assertEqual([self.records()[-1]["from"], self.records()[-1]["to"]], ["büro@hill.example", ["jané@example.com"]])


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
