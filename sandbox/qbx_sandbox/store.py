"""Everything received: kept in memory for the page, and written to the folder at once.

    texts.jsonl        one JSON object a line for each text
    mails.jsonl        one JSON object a line for each mail or refused recipient, with 100,000 characters of a body
    mails/000001.eml   the message exactly as it came

Records of an earlier start in the same folder are read again, and the numbering continues.
"""
import fcntl
import functools
import json
import time
from datetime import datetime
from pathlib import Path

from . import message

FIRST_MESSAGE_ID = 1001
LONGEST_BODY = 100_000


class StoreError(Exception):
    """The folder cannot be used. The text says why."""


class Store:
    """Not thread-safe: everything in the sandbox runs on one event loop."""

    def __init__(self, folder: Path, credits: int):
        self.folder = folder
        self._credits_at_start = credits
        self.credits = credits
        self.resets = 0  # tells a page that its records are gone
        try:
            (folder / "mails").mkdir(parents=True, exist_ok=True)
            self._lock = open(folder / "sandbox.lock", "w")
            fcntl.flock(self._lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
            self.texts = _read_records(folder / "texts.jsonl")
            self.mails = _read_records(folder / "mails.jsonl")
            # Unbuffered: when a request is answered, its whole line is in the file.
            self._text_file = open(folder / "texts.jsonl", "ab", buffering=0)
            self._mail_file = open(folder / "mails.jsonl", "ab", buffering=0)
        except BlockingIOError:
            raise StoreError(f"another sandbox is using the folder {folder}") from None
        except OSError as error:
            raise StoreError(f"the folder {folder} cannot be used: {error.strerror}") from None
        self._next_message_id = max((text.get("id", 0) + 1 for text in self.texts), default=FIRST_MESSAGE_ID)
        self._next_message_id = max(self._next_message_id, FIRST_MESSAGE_ID)

    def take_message_id(self) -> int:
        self._next_message_id += 1
        return self._next_message_id - 1

    def record_text(self, fields: dict):
        """Keeps one text with a number and the time. `fields` comes from the gateway."""
        record = {"number": len(self.texts) + 1, "time": _now(), **fields, "balance": self.credits}
        self._text_file.write(_line(record))
        self.texts.append(record)

    def record_mail(self, fields: dict, raw: bytes | None):
        """Keeps one mail with a number and the time. Without `raw` it is a recipient refused before any data."""
        number = len(self.mails) + 1
        record = {"number": number, "time": _now(), **fields, "file": "", "size": 0, "sender": "", "subject": "", "body": ""}
        if raw is not None:
            record["file"] = f"mails/{number:06}.eml"
            record["size"] = len(raw)
            record.update(message.summary(raw))
            record["body"] = record["body"][:LONGEST_BODY]
            # Needs no temporary name: a message is part of the records only when its line is written.
            with open(f"{self.folder}/{record['file']}", "wb", buffering=0) as file:
                file.write(raw)
        self._mail_file.write(_line(record))
        self.mails.append(record)

    def raw_mail(self, record: dict) -> bytes:
        """The message as it came; empty for a recipient refused before any data."""
        return (self.folder / record["file"]).read_bytes() if record["file"] else b""

    def reset(self):
        """Forgets everything received. Credits and numbers start again."""
        self._text_file.truncate(0)
        self._mail_file.truncate(0)
        for record in self.mails:
            if record["file"]:
                (self.folder / record["file"]).unlink(missing_ok=True)
        self.texts.clear()
        self.mails.clear()
        self.credits = self._credits_at_start
        self._next_message_id = FIRST_MESSAGE_ID
        self.resets += 1


_encode = json.JSONEncoder(ensure_ascii=False).encode


def _now() -> str:
    """Local time with milliseconds and the offset from UTC."""
    seconds, fraction = divmod(time.time_ns() // 1_000_000, 1000)
    moment, zone = _second(seconds)
    return f"{moment}.{fraction:03}{zone}"


@functools.lru_cache(maxsize=1)
def _second(seconds: int) -> tuple[str, str]:
    text = datetime.fromtimestamp(seconds).astimezone().isoformat()
    return text[:19], text[19:]


def _line(record: dict) -> bytes:
    return _encode(record).encode("utf-8", "replace") + b"\n"


def _read_records(path: Path) -> list:
    if not path.exists():
        return []
    records = []
    for line in path.read_bytes().split(b"\n"):
        if not line:
            continue
        try:
            record = json.loads(line)
            if not isinstance(record, dict):
                raise ValueError
        except ValueError:
            raise StoreError(f"{path} is damaged at line {len(records) + 1}; move it away to start afresh") from None
        records.append(record)
    return records
