"""The page as a browser shows it."""
import html
import http.client
import smtplib
import subprocess
import tempfile
from urllib.parse import quote

from support import SandboxTest

MARKUP = "<script>document.title='run'</script> & <b>bold</b>"


class PageTest(SandboxTest):
    arguments = ("--credits", "50")

    def test_shows_what_arrived_as_text(self):
        gateway = http.client.HTTPConnection("127.0.0.1", self.sandbox.port["http"])
        self.addCleanup(gateway.close)
        for to, message in [("07700900123", MARKUP), ("07700900933", "Refused one")]:
            gateway.request("GET", "/sms/send_sms.asp?ClientCode=A&ClientAuth=B&_From=Hill%20Garage"
                                   f"&_To={to}&_Message={quote(message)}")
            gateway.getresponse().read()
        with smtplib.SMTP("localhost", self.sandbox.port["smtp"], timeout=20) as client:
            client.sendmail("a@b.com", "jane@example.com", f"Subject: {MARKUP}\n\nBody {MARKUP}")
        with tempfile.TemporaryDirectory() as profile:
            page = subprocess.run(
                ["/usr/bin/chromium", "--headless", "--no-sandbox", "--disable-gpu", f"--user-data-dir={profile}",
                 "--virtual-time-budget=4000", "--dump-dom", f"http://127.0.0.1:{self.sandbox.port['page']}/"],
                capture_output=True, text=True, timeout=120).stdout
        shown = html.escape(MARKUP, quote=False)
        self.assertIn(f'<div class="bubble">{shown}</div>', page)
        self.assertIn("to 07700 900123 · 1 credit", page)
        self.assertIn("refused, code 33", page)
        self.assertIn(f'<span class="subject">{shown}</span>', page)
        self.assertIn('<dd id="credits">49</dd>', page)
        self.assertIn("<title>Sandbox</title>", page)
        self.assertNotIn(MARKUP, page)
