"""Reads a received message (RFC 5322, MIME): the values for the records and for the page."""
from email import message_from_bytes
from email.errors import HeaderParseError
from email.header import decode_header
from email.message import Message


def summary(raw: bytes) -> dict:
    """Sender, subject and plain text of a message, decoded; empty when missing. Never fails."""
    parsed = message_from_bytes(raw)
    return {"sender": decoded(parsed["From"]), "subject": decoded(parsed["Subject"]), "body": plain_text(parsed)}


def headers(raw: bytes) -> list:
    """The headers in their order, as pairs of name and decoded value."""
    return [[name, decoded(value)] for name, value in message_from_bytes(raw).items()]


def decoded(value) -> str:
    """A header value without folding, with encoded words (RFC 2047) decoded."""
    if value is None:
        return ""
    text = str(value).replace("\r", "").replace("\n", "")
    if "=?" not in text:
        return text
    try:
        return "".join(_word(word, charset) for word, charset in decode_header(text))
    except HeaderParseError:
        return text


def plain_text(parsed: Message) -> str:
    """The first plain part, or the source of an HTML part when there is no other. Line ends are LF."""
    parts = [(part.get_content_type(), part) for part in parsed.walk()]
    chosen = [part for kind, part in parts if kind == "text/plain"] or [part for kind, part in parts if kind[:5] == "text/"]
    return _content(chosen[0]).replace("\r\n", "\n") if chosen else ""


def _content(part: Message) -> str:
    data = part.get_payload(decode=True) or b""
    return _word(data, part.get_content_charset() or "utf-8")


def _word(data, charset) -> str:
    if isinstance(data, str):
        return data
    try:
        return data.decode(charset or "ascii", "replace")
    except LookupError:
        return data.decode("latin-1")
