"""The web page that shows everything received, and its JSON interface."""
import json
from pathlib import Path
from urllib.parse import parse_qs

from . import message
from .steering import Steering, SteeringError
from .store import Store
from .web import Request, Response

_STATIC = Path(__file__).parent / "static"
_FILES = {"/": ("index.html", "text/html"), "/page.css": ("page.css", "text/css"), "/page.js": ("page.js", "text/javascript")}
# The page shows received text as text only. Should some be taken for markup, nothing in it may run or load.
_POLICY = {"Content-Security-Policy": "default-src 'self'; img-src 'self' data:; frame-ancestors 'none'",
           "X-Content-Type-Options": "nosniff", "Cache-Control": "no-store"}


class Page:
    """`ports` is filled when all servers listen."""

    def __init__(self, store: Store, steering: Steering):
        self._store = store
        self._steering = steering
        self.ports = {}

    def handle(self, request: Request) -> Response:
        if request.method == "GET":
            return self._get(request)
        if request.method == "POST":
            return self._post(request)
        return Response(status=405, headers={"Allow": "GET, POST"})

    def _get(self, request: Request) -> Response:
        if request.path in _FILES:
            name, content_type = _FILES[request.path]
            return Response((_STATIC / name).read_bytes(), content_type=f"{content_type}; charset=utf-8", headers=_POLICY)
        if request.path == "/api/state":
            return _json(self._state())
        if request.path == "/api/texts":
            return _records(self._store.texts, request)
        if request.path == "/api/mails":
            return _records(self._store.mails, request)
        if request.path == "/api/steer":
            return _json(self._steering.in_force())
        if request.path.startswith("/api/mails/"):
            return self._mail(request.path.removeprefix("/api/mails/"))
        return _json({"error": "no such page"}, 404)

    def _post(self, request: Request) -> Response:
        try:
            wishes = json.loads(request.body or b"{}")
            if request.path == "/api/steer":
                self._steering.apply(wishes)
            elif request.path == "/api/credits":
                self._store.credits = _credits(wishes)
            elif request.path == "/api/reset":
                self._store.reset()
                self._steering.clear()
            else:
                return _json({"error": "no such page"}, 404)
        except ValueError as error:  # raised by the JSON reader, and SteeringError
            return _json({"error": str(error)}, 400)
        return _json(self._state())

    def _state(self) -> dict:
        return {"credits": self._store.credits, "texts": len(self._store.texts), "mails": len(self._store.mails),
                "resets": self._store.resets, "delay": self._steering.delay, "ports": self.ports,
                "folder": str(self._store.folder)}

    def _mail(self, number: str) -> Response:
        if not number.isdecimal() or not 1 <= int(number) <= len(self._store.mails):
            return _json({"error": "no such mail"}, 404)
        record = self._store.mails[int(number) - 1]
        raw = self._store.raw_mail(record)
        return _json({**record, "headers": message.headers(raw), "raw": raw.decode("utf-8", "replace")})


def _credits(wishes) -> int:
    credits = wishes.get("credits") if isinstance(wishes, dict) else None
    if not isinstance(credits, int) or isinstance(credits, bool) or credits < 0:
        raise SteeringError("credits is a whole number from 0 up")
    return credits


def _records(records: list, request: Request) -> Response:
    """The records with a number above `since`, at most `limit` of them."""
    query = parse_qs(request.query.decode("latin-1"))
    try:
        since = max(0, int(query.get("since", ["0"])[0]))
        limit = max(0, int(query.get("limit", [len(records)])[0]))
    except ValueError:
        return _json({"error": "since and limit are whole numbers"}, 400)
    return _json(records[since:since + limit])


def _json(value, status: int = 200) -> Response:
    body = json.dumps(value, ensure_ascii=False).encode("utf-8", "replace")
    return Response(body, status, "application/json; charset=utf-8", _POLICY)
