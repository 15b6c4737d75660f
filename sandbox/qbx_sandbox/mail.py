"""The mail server: ESMTP with STARTTLS and AUTH on one port, TLS from the first byte on another."""
import asyncio
import itertools
import logging
import re
import ssl

from aiosmtpd.smtp import SMTP, AuthResult

from .steering import Steering
from .store import Store

SIZE_LIMIT = 35 * 1024 * 1024
IDLE_LIMIT = 600  # seconds until a silent client is cut off
_PLAIN_ADDRESS = re.compile(r"<([A-Za-z0-9.!#$%&'*+/=?^_{|}~-]+@[A-Za-z0-9.-]+)>(.*)")


class Accounts:
    """Who may log in: the one pair given, else everyone but the user "refused" and the password "wrong"."""

    def __init__(self, user: str | None, password: str | None):
        self._user = user
        self._password = password

    def check(self, server, session, envelope, mechanism, data) -> AuthResult:
        user, password = (part.decode("utf-8", "replace") for part in data)
        if self._user is not None:
            good = (user, password) == (self._user, self._password)
        else:
            good = bool(user and password) and user != "refused" and password != "wrong"
        if good:
            session.user = user
        return AuthResult(success=good, handled=False)


class Server(SMTP):
    """One connection. Adds to the base class what the records and the steering need, and a shorter way for the
    addresses of nearly every message."""

    def __init__(self, handler, number: int, implicit_tls: bool, **settings):
        super().__init__(handler, data_size_limit=SIZE_LIMIT, enable_SMTPUTF8=True, hostname="localhost",
                         ident="sandbox", timeout=IDLE_LIMIT, **settings)
        self.number = number
        self.messages = 0
        self.quit_behaviour = ""
        self._implicit_tls = implicit_tls

    @property
    def tls(self) -> str:
        if self._implicit_tls:
            return "implicit"
        return "starttls" if self._tls_protocol else ""

    def drop(self):
        """Ends the connection at once; what is written afterwards goes nowhere."""
        self.transport.abort()

    def _getaddr(self, arg):
        match = _PLAIN_ADDRESS.fullmatch(arg or "")
        return match.groups() if match else super()._getaddr(arg)


class Handler:
    """What happens to recipients and messages; the base class calls these methods by their names."""

    def __init__(self, store: Store, steering: Steering):
        self._store = store
        self._steering = steering

    async def handle_RCPT(self, server, session, envelope, address, options):
        behaviour = self._steering.for_recipient(address)
        if behaviour == "drop" or behaviour[0].isdigit():
            self._record(server, envelope, [address], "dropped" if behaviour == "drop" else "refused", behaviour, None)
            if behaviour == "drop":
                server.drop()
                return "421 Dropped"
            return behaviour
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        server.messages += 1
        behaviours = {self._steering.for_recipient(address) for address in envelope.rcpt_tos}
        refusal = next((behaviour for behaviour in behaviours if behaviour.startswith("data ")), "")
        if refusal:
            reply = refusal.removeprefix("data ")
            self._record(server, envelope, envelope.rcpt_tos, "refused", reply, envelope.content)
            return reply
        if "dropdata" in behaviours:
            self._record(server, envelope, envelope.rcpt_tos, "dropped", "dropdata", envelope.content)
            server.drop()
            return "250 OK"
        server.quit_behaviour = next((b for b in behaviours if b.startswith("quit")), server.quit_behaviour)
        detail = ", ".join(sorted(behaviours - {"ok"}))
        self._record(server, envelope, envelope.rcpt_tos, "accepted", detail, envelope.content)
        if "slow" in behaviours:
            await asyncio.sleep(self._steering.delay)
        return f"250 OK, kept as number {len(self._store.mails)}"

    async def handle_QUIT(self, server, session, envelope):
        if server.quit_behaviour == "quitdrop":
            server.drop()
        return "421 Closing without ceremony" if server.quit_behaviour == "quit421" else "221 Bye"

    def _record(self, server, envelope, recipients: list, outcome: str, detail: str, raw: bytes | None):
        self._store.record_mail({
            "from": _clean(envelope.mail_from), "to": [_clean(address) for address in recipients], "outcome": outcome,
            "detail": detail, "tls": server.tls, "user": getattr(server.session, "user", ""),
            "connection": server.number, "message": server.messages}, raw)


def _clean(text: str) -> str:
    """Text without the stand-ins for bytes that were no UTF-8."""
    return text.encode("utf-8", "surrogateescape").decode("utf-8", "replace")


class MailServer:
    """Makes the servers of both ports; they share the count of connections."""

    def __init__(self, store: Store, steering: Steering, accounts: Accounts, context: ssl.SSLContext, auth_needs_tls: bool):
        logging.getLogger("mail.log").setLevel(logging.CRITICAL)  # a broken-off session is nothing to report here
        self._handler = Handler(store, steering)
        self._accounts = accounts
        self._context = context
        self._auth_needs_tls = auth_needs_tls
        self._numbers = itertools.count(1)

    async def listen(self, port: int, implicit_tls: bool) -> tuple[asyncio.Server, int]:
        """Serves on 127.0.0.1; port 0 takes a free one. Returns the server and its port; OSError when it is taken."""
        def connection():
            return Server(self._handler, next(self._numbers), implicit_tls, authenticator=self._accounts.check,
                          tls_context=None if implicit_tls else self._context,
                          auth_require_tls=self._auth_needs_tls and not implicit_tls)

        server = await asyncio.get_running_loop().create_server(
            connection, "127.0.0.1", port, ssl=self._context if implicit_tls else None)
        return server, server.sockets[0].getsockname()[1]
