#!/usr/bin/python3
"""A mail server on 127.0.0.1 for tests: logs in "clerk" with "secret", stores each message
received as <n>.eml in the folder given, with the envelope's recipients in <n>.rcpt, and prints
its port. It stops when its standard input closes."""
import socket
import sys
from pathlib import Path

from aiosmtpd.controller import Controller
from aiosmtpd.smtp import AuthResult, LoginPassword

folder = Path(sys.argv[1])


class Store:
    count = 0

    async def handle_DATA(self, server, session, envelope):
        Store.count += 1
        (folder / f"{Store.count}.eml").write_bytes(envelope.original_content or envelope.content)
        (folder / f"{Store.count}.rcpt").write_text("\n".join(envelope.rcpt_tos))
        return "250 OK"


def login(server, session, envelope, mechanism, auth_data):
    ok = isinstance(auth_data, LoginPassword) and auth_data.login == b"clerk" and auth_data.password == b"secret"
    return AuthResult(success=ok, handled=False)


def free_port():
    with socket.socket() as s:
        s.bind(("127.0.0.1", 0))
        return s.getsockname()[1]


port = free_port()
controller = Controller(Store(), hostname="127.0.0.1", port=port, authenticator=login,
                        auth_require_tls=False, auth_required=True)
controller.start()
print(port, flush=True)
sys.stdin.read()
controller.stop()
