"""Which recipients get another answer than "accepted", and which.

A behaviour is a short phrase ("code 33", "broken off", "550 No such user"). Some numbers and mailbox names have a
behaviour from the start; any other can get one while the sandbox runs.
"""
import re

# The United Kingdom's regulator reserves 07700 900000 to 900999 for fiction: nobody has these numbers.
BUILT_IN_NUMBERS = {
    "07700900900": "status 0",
    "07700900902": "code 2",
    "07700900903": "code 3",
    "07700900912": "status 2",
    "07700900922": "code 22",
    "07700900931": "code 31",
    "07700900933": "code 33",
    "07700900940": "three fields",
    "07700900941": "one field",
    "07700900942": "empty",
    "07700900943": "four fields",
    "07700900950": "http 500",
    "07700900951": "http 404",
    "07700900952": "redirect",
    "07700900960": "slow",
    "07700900961": "broken off",
    "07700900962": "no answer",
    "07700900963": "silence",
    "07700900970": "garbage",
    "07700900971": "html",
    "07700900972": "page",
    "07700900977": "code 77",
}

NUMBER_BEHAVIOURS = {
    "ok": "accepted, also for a number that is steered by default",
    "status 0": "account refused",
    "status 2": "no credits left",
    "code N": "refused with the gateway's code N (2 or more)",
    "three fields": "accepted; the answer has three fields",
    "one field": "accepted; the answer has one field",
    "empty": "accepted; the answer is empty",
    "four fields": "accepted; the answer has four fields and no ending separator",
    "http N": "refused with the HTTP status N (400 to 599)",
    "redirect": "HTTP 302 to a page that says accepted; the text itself is not taken",
    "slow": "accepted; the answer comes after the delay",
    "broken off": "accepted; the connection ends in the middle of the answer",
    "no answer": "accepted; the connection is closed without an answer",
    "silence": "accepted; half an answer, then nothing, on an open connection",
    "garbage": "not taken; the answer is binary garbage",
    "html": "not taken; the answer is an HTML page",
    "page": "not taken; the answer is called HTML and has no tag, as of a network that wants a log-in first",
    "reply TEXT": "not taken; the answer is exactly TEXT",
}

BUILT_IN_MAILBOXES = {
    "refused": "550 5.1.1 No such user here",
    "tempfail": "451 4.3.0 Try again later",
    "nodata": "data 554 5.6.0 Message refused",
    "big": "data 552 5.3.4 Message too big",
    "drop": "drop",
    "dropdata": "dropdata",
    "slow": "slow",
    "quit421": "quit421",
    "quitdrop": "quitdrop",
}

RECIPIENT_BEHAVIOURS = {
    "ok": "accepted, also for a mailbox name that is steered by default",
    "NNN TEXT": "this answer to RCPT (NNN from 400 to 599)",
    "data NNN TEXT": "this answer to the final dot",
    "drop": "the connection is dropped at RCPT",
    "dropdata": "taken, but the connection is dropped instead of an answer to the final dot",
    "slow": "taken; the answer to the final dot comes after the delay",
    "quit421": "taken; the QUIT of this session is answered with 421",
    "quitdrop": "taken; the QUIT of this session gets no answer",
}

_NUMBER_PATTERN = re.compile(
    "|".join(["ok", "status [02]", r"code ([2-9]|[1-9]\d{1,8})", "three fields", "one field", "empty", "four fields",
              r"http [45]\d\d", "redirect", "slow", "broken off", "no answer", "silence", "garbage", "html", "page",
              "reply .*"]), re.DOTALL)
_RECIPIENT_PATTERN = re.compile(r"(ok|(data )?[45]\d\d [^\r\n]+|drop|dropdata|slow|quit421|quitdrop)")


class SteeringError(ValueError):
    """An unknown behaviour, or a malformed steering request."""


def normal_number(number: str) -> str:
    """The digits of a telephone number in its national form: "+44 (0)7700 900123" becomes "07700900123"."""
    digits = re.sub(r"\D", "", number)
    if digits.startswith("0044"):
        digits = digits[2:]
    if digits.startswith("44") and len(digits) >= 12:
        digits = "0" + digits[2:].removeprefix("0")
    return digits


class Steering:
    """The behaviours in force. `delay`, in seconds, holds for every "slow" behaviour."""

    def __init__(self, delay: float):
        self._delay_at_start = delay
        self.clear()

    def clear(self):
        """Back to the behaviours of the start."""
        self.delay = self._delay_at_start
        self.credit_query = "ok"
        self._numbers = {}
        self._recipients = {}

    def for_number(self, number: str) -> str:
        digits = normal_number(number)
        return self._numbers.get(digits) or BUILT_IN_NUMBERS.get(digits, "ok")

    def for_recipient(self, address: str) -> str:
        """By the whole address; without one for it, by the mailbox name, or by the part of the name after a "+"."""
        address = address.lower()
        if address in self._recipients:
            return self._recipients[address]
        mailbox = address.rpartition("@")[0].rpartition("+")[2]
        return BUILT_IN_MAILBOXES.get(mailbox, "ok")

    def in_force(self) -> dict:
        """All behaviours, built in or added: "numbers", "recipients", "mailboxes", "credit_query", "delay"."""
        return {"numbers": BUILT_IN_NUMBERS | self._numbers, "recipients": self._recipients,
                "mailboxes": BUILT_IN_MAILBOXES, "credit_query": self.credit_query, "delay": self.delay}

    def apply(self, wishes: dict):
        """Adds the behaviours of a request. An empty request clears all; one with a wrong part changes nothing.

        Keys: "numbers" and "recipients" (each maps to a behaviour), "credit_query" (a behaviour of a number, used for
        the balance request) and "delay" (seconds).
        """
        if not isinstance(wishes, dict):
            raise SteeringError("a JSON object is expected")
        unknown = set(wishes) - {"numbers", "recipients", "credit_query", "delay"}
        if unknown:
            raise SteeringError(f"unknown key: {sorted(unknown)[0]}")
        if not wishes:
            self.clear()
            return
        numbers = _checked(wishes.get("numbers", {}), _NUMBER_PATTERN, NUMBER_BEHAVIOURS)
        recipients = _checked(wishes.get("recipients", {}), _RECIPIENT_PATTERN, RECIPIENT_BEHAVIOURS)
        query = _checked({"": wishes.get("credit_query", self.credit_query)}, _NUMBER_PATTERN, NUMBER_BEHAVIOURS)
        delay = wishes.get("delay", self.delay)
        if isinstance(delay, bool) or not isinstance(delay, (int, float)) or not 0 <= delay <= 3600:
            raise SteeringError("delay is a number of seconds from 0 to 3600")
        self._numbers.update((normal_number(number), behaviour) for number, behaviour in numbers.items())
        self._recipients.update((address.lower(), behaviour) for address, behaviour in recipients.items())
        self.credit_query = query[""]
        self.delay = delay


def _checked(table, pattern, known) -> dict:
    if not isinstance(table, dict):
        raise SteeringError("an object of recipients and behaviours is expected")
    for behaviour in table.values():
        if not isinstance(behaviour, str) or not pattern.fullmatch(behaviour):
            raise SteeringError(f"unknown behaviour: {behaviour!r}; known are: {', '.join(known)}")
    return table


def help_table() -> str:
    """The built-in numbers and mailbox names, one a line, for --help."""
    lines = ["steering numbers (any other number is accepted; +44 and 0044 forms count as well):"]
    lines += [f"  {number[:5]} {number[5:]}   {behaviour}" for number, behaviour in BUILT_IN_NUMBERS.items()]
    lines += ["", "steering mailbox names (NAME@any.host or anything+NAME@any.host):"]
    lines += [f"  {name:<13} {behaviour}" for name, behaviour in BUILT_IN_MAILBOXES.items()]
    lines += ["", "what the behaviours of numbers mean:"]
    lines += [f"  {name:<13} {meaning}" for name, meaning in NUMBER_BEHAVIOURS.items()]
    lines += ["", "what the behaviours of mail recipients mean:"]
    lines += [f"  {name:<13} {meaning}" for name, meaning in RECIPIENT_BEHAVIOURS.items()]
    return "\n".join(lines)
