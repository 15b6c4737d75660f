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
LINE_LIMIT = 998  # characters of a line without its end (RFC 5322, 2.1.1)
SESSION_LIMIT = 24 * 3600  # seconds
_PLAIN_ADDRESS = re.compile(r"<([A-Za-z0-9.!#$%&'*+/=?^_{|}~-]+@[A-Za-z0-9.-]+)>(.*)")


class Accounts:
    """Who may log in: the given pair only; without one, everybody but the user "refused" and the password "wrong"."""

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
    """One connection. Adds to the base class what the records and the steering need. Reads ordinary addresses and the
    data in a faster way, because the base class spends half of its work on them."""

    line_length_limit = 64 * 1024  # of the buffer; commands and lines of a message have their own limits

    def __init__(self, handler, number: int, implicit_tls: bool, **settings):
        super().__init__(handler, data_size_limit=SIZE_LIMIT, enable_SMTPUTF8=True, hostname="localhost",
                         ident="sandbox", timeout=SESSION_LIMIT, **settings)
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
        """Ends the connection at once. Later writes are lost."""
        self.transport.abort()

    def _reset_timeout(self, duration=None):
        # The base class restarts a timer at every command. One timer for the whole session is enough here.
        if self._timeout_handle is None:
            super()._reset_timeout(duration)

    async def smtp_DATA(self, arg):
        if arg or not self.session.host_name or not self.envelope.rcpt_tos:
            await super().smtp_DATA(arg)  # refuses the command
            return
        await self.push("354 End data with <CR><LF>.<CR><LF>")
        content = await self._read_data()
        if content is None:
            status = "552 5.3.4 Message too big"
        elif any(len(line) > LINE_LIMIT for line in content.split(b"\r\n")):
            status = "500 5.6.0 Line too long"
        else:
            self.envelope.content = self.envelope.original_content = content
            status = await self.event_handler.handle_DATA(self, self.session, self.envelope)
        self._set_post_data_state()
        await self.push(status)

    async def _read_data(self) -> bytes | None:
        """The message up to the final dot, without the doubled dots (RFC 5321, 4.5.2); None when it is too big."""
        data = bytearray(b"\r\n")  # a line end, so that a dot in the first line follows one, too
        too_big = False
        end = -1
        while end < 0:
            searched = len(data)
            arrived = await self._reader.read(self.line_length_limit)
            if not arrived:
                raise ConnectionResetError
            data += arrived
            end = data.find(b"\r\n.\r\n", max(0, searched - 4))
            if len(data) > SIZE_LIMIT and end < 0:
                too_big = True
                del data[:-4]
        self._reader._buffer[:0] = data[end + 5:]  # commands that followed the message at once
        if too_big or end > SIZE_LIMIT:
            return None
        return bytes(data[:end + 2]).replace(b"\r\n..", b"\r\n.")[2:]

    def _getaddr(self, arg):
        match = _PLAIN_ADDRESS.fullmatch(arg or "")
        return match.groups() if match else super()._getaddr(arg)


class Handler:
    """Answers recipients and messages. The base class calls these methods by name."""

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
    """The text, with a replacement character for every byte that was no UTF-8."""
    return text.encode("utf-8", "surrogateescape").decode("utf-8", "replace")


class MailServer:
    """Makes the servers of both ports, which share the count of connections."""

    def __init__(self, store: Store, steering: Steering, accounts: Accounts, context: ssl.SSLContext, auth_needs_tls: bool):
        logging.getLogger("mail.log").setLevel(logging.CRITICAL)  # a session that breaks off is not reported
        self._handler = Handler(store, steering)
        self._accounts = accounts
        self._context = context
        self._auth_needs_tls = auth_needs_tls
        self._numbers = itertools.count(1)

    async def listen(self, port: int, implicit_tls: bool) -> tuple[asyncio.Server, int]:
        """Listens on 127.0.0.1; port 0 means a free one. Returns the server and its port; OSError when it is taken."""
        def connection():
            return Server(self._handler, next(self._numbers), implicit_tls, authenticator=self._accounts.check,
                          tls_context=None if implicit_tls else self._context,
                          auth_require_tls=self._auth_needs_tls and not implicit_tls)

        server = await asyncio.get_running_loop().create_server(
            connection, "127.0.0.1", port, ssl=self._context if implicit_tls else None)
        return server, server.sockets[0].getsockname()[1]
