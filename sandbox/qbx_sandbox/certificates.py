"""The certificates of the mail server: its own small authority, and one certificate for localhost."""
import ssl
import subprocess
import tempfile
from pathlib import Path

_SERVER_EXTENSIONS = """\
basicConstraints = critical, CA:FALSE
keyUsage = critical, digitalSignature
extendedKeyUsage = serverAuth
subjectAltName = DNS:localhost, IP:127.0.0.1, IP:0:0:0:0:0:0:0:1
"""
_KEY = ["-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes"]
_DAYS = ["-days", "3650"]
_FILES = ["ca.pem", "server.key", "server.pem"]


class CertificateError(Exception):
    """No certificate could be made. The text says why."""


def server_context(folder: Path) -> ssl.SSLContext:
    """A TLS context with the certificate in `folder`. Makes it, and ca.pem for clients, when there is none."""
    if not _usable(folder):
        _make(folder)
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(folder / "server.pem", folder / "server.key")
    return context


def _usable(folder: Path) -> bool:
    if not all((folder / name).exists() for name in _FILES):
        return False
    checks = [["openssl", "x509", "-checkend", "86400", "-noout", "-in", folder / "server.pem"],
              ["openssl", "verify", "-CAfile", folder / "ca.pem", folder / "server.pem"]]
    return all(subprocess.run(check, capture_output=True).returncode == 0 for check in checks)


def _make(folder: Path):
    folder.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(dir=folder) as name:
        work = Path(name)
        (work / "extensions").write_text(_SERVER_EXTENSIONS)
        # With -config the machine's settings do not matter. The authority's key is deleted with the folder.
        (work / "config").write_text("[req]\ndistinguished_name = name\n[name]\n")
        _openssl(work, ["req", "-config", "config", "-x509", *_KEY, *_DAYS, "-subj", "/CN=Sandbox authority",
                        "-addext", "basicConstraints=critical,CA:TRUE", "-addext", "keyUsage=critical,keyCertSign,cRLSign",
                        "-addext", "subjectKeyIdentifier=hash", "-keyout", "ca.key", "-out", "ca.pem"])
        _openssl(work, ["req", "-config", "config", *_KEY, "-subj", "/CN=localhost",
                        "-keyout", "server.key", "-out", "request"])
        _openssl(work, ["x509", "-req", *_DAYS, "-in", "request", "-CA", "ca.pem", "-CAkey", "ca.key",
                        "-CAcreateserial", "-extfile", "extensions", "-out", "server.pem"])
        for file in _FILES:
            (work / file).rename(folder / file)


def _openssl(work: Path, arguments: list):
    try:
        done = subprocess.run(["openssl", *arguments], cwd=work, capture_output=True, text=True)
    except FileNotFoundError:
        raise CertificateError("the command openssl is missing (Debian package openssl)") from None
    if done.returncode != 0:
        raise CertificateError(f"openssl could not make a certificate: {done.stderr.strip()}")
