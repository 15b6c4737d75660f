"""Command line, start and end of the sandbox."""
import argparse
import asyncio
import os
import signal
import sys
from pathlib import Path

from . import certificates, steering, web
from .gateway import Gateway
from .mail import Accounts, MailServer
from .page import Page
from .steering import Steering
from .store import Store, StoreError

PARENT_CHECK = 0.25  # seconds between two looks at the parent process

_DESCRIPTION = """\
An SMS gateway and a mail server on loopback. They deliver to nobody, keep what they received in a
folder and show it on a web page. One line on standard output tells the ports once all is ready."""
_EXAMPLE = """\
example:
  sandbox --folder ~/garage-sandbox --credits 500
    sandbox ready http=40001 smtp=40002 smtps=40003 page=40004 folder=/home/jane/garage-sandbox
  curl 'http://127.0.0.1:40001/sms/send_sms.asp?ClientCode=A&ClientAuth=B&_To=07700900123&_From=Garage&_Message=Hello'
    "1"|"499"|"1001"|"0"|
  curl -d '{"numbers": {"07700 900123": "code 33"}, "delay": 1}' http://127.0.0.1:40004/api/steer

JSON interface, on the port of the page:
  GET  /api/state                 credits, counts, ports, folder
  GET  /api/texts?since=N&limit=M texts with a number above N, at most M; /api/mails the same
  GET  /api/mails/N               one mail with its headers and source
  GET  /api/steer                 all that is steered
  POST /api/steer                 adds {"numbers": {NUMBER: BEHAVIOUR}, "recipients": {ADDRESS: BEHAVIOUR},
                                  "credit_query": BEHAVIOUR, "delay": SECONDS}; {} goes back to what is built in
  POST /api/credits               {"credits": N}
  POST /api/reset                 forgets all records and steering; credits as at the start

"""


def parse_arguments(arguments):
    parser = argparse.ArgumentParser(
        prog="sandbox", formatter_class=argparse.RawDescriptionHelpFormatter,
        description=_DESCRIPTION, epilog=_EXAMPLE + steering.help_table())
    add = parser.add_argument
    add("--folder", type=Path, required=True, metavar="DIR", help="where everything received is kept; made when missing")
    add("--http", type=_port, default=0, metavar="PORT", help="port of the SMS gateway (default: a free one)")
    add("--smtp", type=_port, default=0, metavar="PORT", help="port of the mail server, with STARTTLS (default: a free one)")
    add("--smtps", type=_port, default=0, metavar="PORT",
        help="port of the mail server with TLS from the start (default: a free one)")
    add("--page", type=_port, default=0, metavar="PORT", help="port of the web page (default: a free one)")
    add("--credits", type=_amount, default=1000, metavar="N", help="text credits at the start (default: 1000)")
    add("--delay", type=float, default=5.0, metavar="SECONDS", help="how long a slow answer takes (default: 5)")
    add("--client", metavar="CODE", help='the only gateway account (default: any but "refused")')
    add("--password", metavar="PW", help="password of the gateway account")
    add("--smtp-user", metavar="NAME", help='the only mail account (default: any but "refused")')
    add("--smtp-password", metavar="PW", help='password of the mail account (default: any but "wrong")')
    add("--auth-needs-tls", action="store_true", help="refuse a log-in to the mail server without TLS")
    add("--with-parent", action="store_true", help="end when the process that started the sandbox ends")
    add("--version", action="version", version="sandbox " + _version())
    options = parser.parse_args(arguments)
    if (options.client is None) != (options.password is None):
        parser.error("--client and --password belong together")
    if (options.smtp_user is None) != (options.smtp_password is None):
        parser.error("--smtp-user and --smtp-password belong together")
    return options


def _version() -> str:
    """The launcher of the build tree sets the version; an installed sandbox has a file with it."""
    file = Path(__file__).resolve().parent.parent / "VERSION"
    return os.environ.get("QBX_VERSION") or (file.read_text().strip() if file.exists() else "unknown")


def _port(text: str) -> int:
    if not text.isdecimal() or int(text) > 65535:
        raise argparse.ArgumentTypeError("a port is a number up to 65535")
    return int(text)


def _amount(text: str) -> int:
    if not text.isdecimal():
        raise argparse.ArgumentTypeError("credits are a whole number from 0 up")
    return int(text)


async def serve(options, parent: int):
    """Runs all four servers until a signal comes or the parent ends."""
    stop = asyncio.Event()
    loop = asyncio.get_running_loop()
    loop.set_exception_handler(_report)
    for number in (signal.SIGTERM, signal.SIGINT):
        loop.add_signal_handler(number, stop.set)

    folder = options.folder.resolve()
    store = Store(folder, options.credits)
    steered = Steering(options.delay)
    context = certificates.server_context(folder / "tls")
    gateway = Gateway(store, steered, options.client, options.password)
    mail = MailServer(store, steered, Accounts(options.smtp_user, options.smtp_password), context, options.auth_needs_tls)
    page = Page(store, steered)

    http, page.ports["http"] = await web.listen(gateway.handle, options.http)
    smtp, page.ports["smtp"] = await mail.listen(options.smtp, implicit_tls=False)
    smtps, page.ports["smtps"] = await mail.listen(options.smtps, implicit_tls=True)
    shown, page.ports["page"] = await web.listen(page.handle, options.page)
    ports = " ".join(f"{name}={port}" for name, port in page.ports.items())
    print(f"sandbox ready {ports} folder={folder}", flush=True)
    await _until_end(stop, parent if options.with_parent else None)
    for server in (http, smtp, smtps, shown):
        server.close()


async def _until_end(stop: asyncio.Event, parent: int | None):
    # Looks for the parent again and again. The kernel could send a signal instead, but also sends it when only the
    # thread that started this process ends.
    while not stop.is_set() and parent in (None, os.getppid()):
        try:
            await asyncio.wait_for(stop.wait(), None if parent is None else PARENT_CHECK)
        except asyncio.TimeoutError:
            pass


def _report(loop, context):
    """A client that vanishes or distrusts the certificate is no error of the sandbox."""
    if not isinstance(context.get("exception"), OSError):
        loop.default_exception_handler(context)


def main(arguments=None) -> int:
    parent = os.getppid()
    options = parse_arguments(arguments)
    try:
        asyncio.run(serve(options, parent))
    except (StoreError, certificates.CertificateError, OSError) as error:
        print(f"sandbox: {error}", file=sys.stderr)
        return 1
    return 0
