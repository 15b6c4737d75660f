"""The SMS gateway: two HTTP GET requests. An answer has fields like "1"|"96"|"1001"|"0"| (status, balance, message id,
code). Status 1: the account is accepted; 0: refused; 2: out of credits. A code below 2: the text is accepted.
"""
import asyncio
import codecs
from urllib.parse import unquote_to_bytes

from .steering import Steering, normal_number
from .store import Store
from .web import NoAnswer, Request, Response

SEND_PATH = "/sms/send_sms.asp"
VERIFY_PATH = "/sms/verifyclient.asp"
OK_PATH = "/sms/ok.asp"  # the target of the "redirect" behaviour

# In these cases the text was received and charged, whether or not the answer arrived.
TAKEN = {"ok", "three fields", "one field", "empty", "four fields", "slow", "broken off", "no answer", "silence"}


class Gateway:
    """`client` and `password`, when given, are the only account. Otherwise every pair of non-empty values is one."""

    def __init__(self, store: Store, steering: Steering, client: str | None, password: str | None):
        self._store = store
        self._steering = steering
        self._client = client
        self._password = password

    def handle(self, request: Request):
        """The answer to a request; a coroutine when it is delayed."""
        if request.method != "GET":
            return Response(status=405, headers={"Allow": "GET"})
        parameters = decode_query(request.query)
        if request.path == SEND_PATH:
            return self._send(parameters, request.connection)
        if request.path == VERIFY_PATH:
            return self._verify(parameters)
        if request.path == OK_PATH:
            return plain_text(fields(1, self._store.credits, 1, 0))
        return Response(b"no such page", status=404)

    def _send(self, parameters: dict, connection: int):
        to, text = parameters.get("_To", ""), parameters.get("_Message", "")
        cost = credits_for(len(text))
        behaviour = self._outcome(parameters, to, text, cost)
        accepted = behaviour in TAKEN
        message_id = 0
        if accepted:
            self._store.credits -= cost
            message_id = self._store.take_message_id()
        self._store.record_text({
            "client": parameters.get("ClientCode", ""), "from": parameters.get("_From", ""), "to": to, "message": text,
            "outcome": "accepted" if accepted else "refused", "detail": "" if behaviour == "ok" else behaviour,
            "id": message_id, "credits": cost if accepted else 0, "connection": connection})
        return self._answer(behaviour, fields(1, self._store.credits, message_id, 0))

    def _outcome(self, parameters: dict, to: str, text: str, cost: int) -> str:
        if not self._knows(parameters):
            return "status 0"
        behaviour = self._steering.for_number(to)
        if behaviour not in TAKEN:
            return behaviour
        if not normal_number(to):
            return "code 33"
        if not text:
            return "code 3"
        return "status 2" if cost > self._store.credits else behaviour

    def _verify(self, parameters: dict):
        behaviour = self._steering.credit_query if self._knows(parameters) else "status 0"
        if behaviour == "status 0":
            return plain_text(fields(0, 0))
        return self._answer(behaviour, fields(1, self._store.credits))

    def _knows(self, parameters: dict) -> bool:
        client, password = parameters.get("ClientCode", ""), parameters.get("ClientAuth", "")
        if self._client is not None:
            return (client, password) == (self._client, self._password)
        return bool(client and password) and client != "refused"

    def _answer(self, behaviour: str, plain: bytes):
        """The answer of a behaviour, as it is sent. `plain` is the answer to an accepted request."""
        kind, _, rest = behaviour.partition(" ")
        if kind == "status":
            return plain_text(fields(int(rest), self._store.credits if rest == "2" else 0, 0, 0))
        if kind == "code":
            return plain_text(fields(1, self._store.credits, 0, int(rest)))
        if kind == "http":
            return Response(b"<html><body>Error</body></html>", status=int(rest))
        if kind == "reply":
            return plain_text(rest.encode("cp1252", "replace"))
        if behaviour == "ok":
            return plain_text(plain)
        if behaviour == "slow":
            return self._late(plain_text(plain))
        return {
            "three fields": plain_text(b"|".join(plain.split(b"|")[:3])),
            "one field": plain_text(plain.split(b"|")[0]),
            "empty": plain_text(b""),
            "four fields": plain_text(plain.removesuffix(b"|")),
            "redirect": Response(status=302, headers={"Location": OK_PATH}),
            "broken off": plain_text(plain, cut_after=len(plain) // 2),
            "silence": plain_text(plain, cut_after=len(plain) // 2, hang=True),
            "no answer": NoAnswer(),
            "garbage": Response(bytes(range(256)), content_type="application/octet-stream"),
            "html": Response(b"<html><body><h1>Service notice</h1><p>1|2|3|4|</p></body></html>"),
            "page": Response(b"Please log in to the network."),
        }[behaviour]

    async def _late(self, response: Response) -> Response:
        await asyncio.sleep(self._steering.delay)
        return response


def plain_text(body: bytes, **more) -> Response:
    """An answer of the gateway itself. Other answers (an error page, a notice) are HTML."""
    return Response(body, content_type="text/plain; charset=windows-1252", **more)


def fields(*values: int) -> bytes:
    return "".join(f'"{value}"|' for value in values).encode("ascii")


def credits_for(length: int) -> int:
    """Credits of a text with `length` characters: a single text has up to 160, each part of a longer one 153."""
    return 1 if length <= 160 else -(-length // 153)


def decode_query(query: bytes) -> dict:
    """The parameters of a query string. Each byte is a Windows-1252 character; only the pound sign is UTF-8."""
    result = {}
    for pair in query.split(b"&"):
        name, _, value = pair.partition(b"=")
        result[_decode(name)] = _decode(value)
    return result


def _decode(value: bytes) -> str:
    plain = unquote_to_bytes(value.replace(b"+", b" ")).replace(b"\xc2\xa3", b"\xa3")
    return codecs.charmap_decode(plain, "strict", _CHARACTERS)[0]


# Five bytes are no character of the code page. They are read as the control characters of their number.
_CHARACTERS = "".join(bytes([byte]).decode("cp1252", "ignore") or chr(byte) for byte in range(256))
