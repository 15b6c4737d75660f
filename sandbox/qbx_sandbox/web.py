"""A small HTTP/1.1 server on asyncio. It keeps connections, and can delay, break or omit an answer on purpose."""
import asyncio
from dataclasses import dataclass, field
from http.client import responses
from typing import Awaitable, Callable, Union

MAX_HEAD = 64 * 1024
MAX_BODY = 1024 * 1024


@dataclass(slots=True)
class Request:
    method: str
    path: str
    query: bytes  # as sent, still percent-encoded
    body: bytes
    connection: int  # 1 for the first connection of this server


@dataclass(slots=True)
class Response:
    body: bytes = b""
    status: int = 200
    content_type: str = "text/html"
    headers: dict = field(default_factory=dict)
    cut_after: int | None = None  # bytes of the body that are sent before the answer breaks off
    hang: bool = False  # with cut_after: the connection stays open and silent


class NoAnswer(Response):
    """The connection is closed without a byte."""


Handler = Callable[[Request], Union[Response, Awaitable[Response]]]


class BadRequest(Exception):
    """The input is no HTTP request that this server answers. The value is the status."""


class Connection(asyncio.Protocol):
    """One client. Requests are answered in their order; a delayed answer delays all later ones."""

    def __init__(self, handler: Handler, number: int):
        self._handler = handler
        self._number = number
        self._buffer = bytearray()
        self._waiting = None
        self._finished = False

    def connection_made(self, transport):
        self._transport = transport

    def connection_lost(self, exc):
        self._finished = True
        if self._waiting:
            self._waiting.cancel()

    def data_received(self, data):
        if self._finished:
            return
        self._buffer += data
        self._pump()

    def _pump(self):
        try:
            while not self._waiting and not self._finished:
                taken = self._take_request()
                if taken is None:
                    return
                request, keep = taken
                reply = self._handler(request)
                if isinstance(reply, Response):
                    self._send(reply, keep)
                else:
                    self._waiting = asyncio.get_running_loop().create_task(self._send_later(reply, keep))
        except BadRequest as error:
            self._send(Response(status=int(error.args[0])), keep=False)

    async def _send_later(self, reply: Awaitable[Response], keep: bool):
        response = await reply
        self._waiting = None
        self._send(response, keep)
        self._pump()

    def _take_request(self):
        """The next whole request, and whether the connection is kept after it; None while bytes are missing."""
        end = self._buffer.find(b"\r\n\r\n")
        if end < 0 or end > MAX_HEAD:
            if len(self._buffer) > MAX_HEAD:
                raise BadRequest(431)
            return None
        lines = bytes(self._buffer[:end]).split(b"\r\n")
        words = lines[0].split(b" ")
        if len(words) != 3 or not words[2].startswith(b"HTTP/1."):
            raise BadRequest(400)
        names = {}
        for line in lines[1:]:
            name, _, value = line.partition(b":")
            names[name.lower()] = value.strip()
        length = names.get(b"content-length", b"0")
        if b"transfer-encoding" in names or not length.isdigit():
            raise BadRequest(411)
        if int(length) > MAX_BODY:
            raise BadRequest(413)
        total = end + 4 + int(length)
        if len(self._buffer) < total:
            return None
        body = bytes(self._buffer[end + 4:total])
        del self._buffer[:total]
        path, _, query = words[1].partition(b"?")
        choice = names.get(b"connection", b"").lower()
        keep = choice != b"close" if words[2] == b"HTTP/1.1" else choice == b"keep-alive"
        request = Request(words[0].decode("latin-1"), path.decode("latin-1"), query, body, self._number)
        return request, keep

    def _send(self, response: Response, keep: bool):
        if isinstance(response, NoAnswer):
            self._finish()
            return
        lines = [f"HTTP/1.1 {response.status} {responses.get(response.status, 'Error')}",
                 f"Content-Type: {response.content_type}",
                 f"Content-Length: {len(response.body)}"]
        lines += [f"{name}: {value}" for name, value in response.headers.items()]
        if not keep:
            lines.append("Connection: close")
        head = "\r\n".join(lines).encode("latin-1") + b"\r\n\r\n"
        self._transport.write(head + response.body[:response.cut_after])
        if response.cut_after is not None and response.hang:
            self._finished = True  # nothing more is read or answered, until the client gives up
        elif response.cut_after is not None or not keep:
            self._finish()

    def _finish(self):
        self._finished = True
        self._transport.close()


async def listen(handler: Handler, port: int) -> tuple[asyncio.Server, int]:
    """Listens on 127.0.0.1; port 0 means a free one. Returns the server and its port; OSError when it is taken."""
    count = 0

    def connection():
        nonlocal count
        count += 1
        return Connection(handler, count)

    server = await asyncio.get_running_loop().create_server(connection, "127.0.0.1", port)
    return server, server.sockets[0].getsockname()[1]
