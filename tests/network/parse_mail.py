"""Reads an e-mail from standard input with Python's parser, and prints its content and its defects as JSON."""
import email
import email.header
import email.policy
import email.utils
import json
import sys

raw = sys.stdin.buffer.read()
message = email.message_from_bytes(raw, policy=email.policy.SMTP)


def people(name):
    """Display names and addresses of a header. Uses the older parser: the newer puts blanks between encoded words."""
    unfolded = [value.replace("\r\n", "") for value in email.message_from_bytes(raw).get_all(name, [])]
    pairs = email.utils.getaddresses(unfolded)
    return [[str(email.header.make_header(email.header.decode_header(person))), address] for person, address in pairs]


defects = [str(d) for part in message.walk() for d in part.defects]
defects += [f"{name}: {d}" for name, value in message.items() for d in value.defects]
print(json.dumps({
    "headers": {name: str(value) for name, value in message.items()}, "addresses": {name: people(name) for name in ("From", "To")}, "defects": defects,
    "date": message["Date"].datetime.isoformat(), "type": message.get_content_type(),
    "body": message.get_body().get_content(), "bodyType": message.get_body().get_content_type(),
    "attachments": [[part.get_filename(), part.get_content().hex()] for part in message.iter_attachments()]}))
