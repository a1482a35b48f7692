#!/usr/bin/python3
"""A mail server of this machine for tests: mail_server.py MODE FOLDER [CERTIFICATE KEY]

Prints its port when it is ready, and serves until it is killed. Messages are written into FOLDER/1, FOLDER/2 …: the
fields of the header as Python reads them, the text, the envelope, and each attachment in `files`. FOLDER/connections
counts the connections.
"""
import asyncio
import email
import email.policy
import logging
import os
import ssl
import sys
import warnings

from aiosmtpd.smtp import SMTP, AuthResult

logging.disable()
warnings.simplefilter("ignore")
ACCOUNT, PASSWORD = b"reports", b"s3cret!pass"
HUGE = 1 << 40
mode, folder = sys.argv[1], sys.argv[2]
context = None
if mode != "no-tls":
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    if len(sys.argv) > 4:
        context.load_cert_chain(sys.argv[3], sys.argv[4])


def write(place, name, text):
    with open(os.path.join(place, name), "w", encoding="utf-8", newline="") as file:
        file.write(str(text))


def store(envelope, number):
    place = os.path.join(folder, str(number))
    os.makedirs(os.path.join(place, "files"))
    message = email.message_from_bytes(envelope.content, policy=email.policy.default)
    for name in ("Subject", "From", "To", "Date", "Message-ID", "MIME-Version"):
        write(place, name, message[name])
    write(place, "envelope", envelope.mail_from + "\n" + "\n".join(envelope.rcpt_tos) + "\n")
    write(place, "text", message.get_body(("plain",)).get_content().replace("\r\n", "\n"))
    defects = [defect for part in message.walk() for defect in part.defects]
    long_lines = [line for line in envelope.content.split(b"\r\n") if len(line) > 78 or b"\n" in line or b"\r" in line]
    write(place, "defects", "".join(map(repr, defects + long_lines)))
    write(place, "date-is-aware", message["Date"].datetime.tzinfo is not None)
    for part in message.iter_attachments():
        with open(os.path.join(place, "files", part.get_filename()), "wb") as file:
            file.write(part.get_payload(decode=True))


class Handler:
    messages = 0

    async def handle_RCPT(self, server, session, envelope, address, options):
        if mode == "refuse-recipient":
            return "550 5.1.1 no such mailbox"
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        if mode == "refuse-data":
            return "554 5.7.1 not wanted here"
        if mode == "mute-at-end":
            await asyncio.sleep(3600)
        Handler.messages += 1
        store(envelope, Handler.messages)
        return "250 OK"


def authenticate(server, session, envelope, mechanism, data):
    if mode != "refuse-login" and data.login == ACCOUNT and data.password == PASSWORD:
        return AuthResult(success=True)
    # What a careless server would say.
    words = "535 5.7.8 no " + data.login.decode() + " with " + data.password.decode()
    return AuthResult(success=False, handled=False, message=words)


class Server(SMTP):
    async def smtp_QUIT(self, arg):
        if mode == "mute-at-quit":
            await asyncio.sleep(3600)
        await super().smtp_QUIT(arg)

    async def smtp_DATA(self, arg):
        if mode not in ("drop-in-data", "sink"):
            return await super().smtp_DATA(arg)
        await self.push("354 go on")
        if mode == "sink":
            return await self.swallow()
        await self._reader.read(100)
        self.transport.abort()

    async def swallow(self):
        """Takes a message without looking into it, so that a sender's speed shows."""
        end = b""
        while not end.endswith(b"\r\n.\r\n"):
            end = (end + await self._reader.read(1 << 20))[-5:]
        self._set_post_data_state()
        await self.push("250 OK")


def smtp():
    return Server(Handler(), require_starttls=context is not None, tls_context=context, auth_required=True,
                  auth_require_tls=context is not None, authenticator=authenticate, hostname="localhost",
                  data_size_limit=1000 if mode == "small" else HUGE)


class Broken(asyncio.Protocol):
    """What doesn't speak the language."""

    def connection_made(self, transport):
        if mode == "drop":
            transport.abort()
        elif mode == "garbage":
            transport.write(bytes(range(256)) * 4 + b"\r\n\0\xff<xml>\r\n")
            transport.close()
        elif mode == "megabytes":
            self.transport = transport
            self.pour()

    def pour(self):
        if not self.transport.is_closing():
            self.transport.write(b"220-welcome to this server\r\n" * 1000)
            asyncio.get_running_loop().call_later(0.001, self.pour)


def counted(make):
    count = 0

    def protocol():
        nonlocal count
        count += 1
        write(folder, "connections", count)
        return make()

    return protocol


async def main():
    broken = mode in ("mute", "drop", "garbage", "megabytes")
    server = await asyncio.get_running_loop().create_server(counted(Broken if broken else smtp), "127.0.0.1", 0)
    print(server.sockets[0].getsockname()[1], flush=True)
    await server.serve_forever()


asyncio.run(main())
