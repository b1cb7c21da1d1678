"""Requests to quillmaze-server written byte for byte as the game writes them (one connection
per request, unencoded form fields, the game's multipart upload), for the scripted server tests
and the benchmark."""
import socket

BOUNDARY = "---------------------------3845763985746298765429562495"


def raw(port, data, timeout=10.0):
    """Sends the bytes and reads until the service closes the connection."""
    with socket.create_connection(("127.0.0.1", port), timeout=timeout) as s:
        s.sendall(data)
        chunks = []
        while True:
            chunk = s.recv(65536)
            if not chunk:
                break
            chunks.append(chunk)
    return b"".join(chunks)


def message(response):
    """The text between "[HP]" and "[HP&]"."""
    start = response.find(b"[HP]")
    end = response.find(b"[HP&]")
    if start < 0 or end < start:
        raise ValueError("no packet in %r" % response[:80])
    return response[start + 4:end].decode("latin-1")


def form(port, body):
    body = body.encode("latin-1") if isinstance(body, str) else body
    head = ("POST / HTTP/1.1\r\nHost: test\r\nContent-Type: application/x-www-form-urlencoded\r\n"
            "Content-Length: %d\r\nConnection: close\r\n\r\n" % len(body)).encode()
    return message(raw(port, head + body))


def account(answer, word):
    """(user id, session) from a LOGIN or REGISTER answer, or None."""
    if not answer.startswith(word + "1") or "_" not in answer:
        return None
    return tuple(answer[len(word) + 2:].split("_", 1))  # after the word, its 1 and one flag


def register(port, name, email=None):
    email = email or name + "@example.org"
    return account(form(port, "qcode=register&username=%s&password=pw&email=%s&build=106" % (name, email)),
                   "REGISTER")


def login(port, name):
    return account(form(port, "qcode=login&username=%s&password=pw&build=106" % name), "LOGIN")


def upload(port, user, slot, map_bytes, timeout=10.0):
    uid, session = user
    fields = {"blocksize": "64", "editable": "1", "locked": "0", "map": "0,", "mapno": str(slot),
              "name": "map", "qcode": "postmap", "s": session, "timems": "1", "user_id": uid}
    body = b""
    for name in sorted(fields):
        body += ("%s\r\nContent-Disposition: form-data; name=\"%s\"\r\n\r\n%s\r\n"
                 % (BOUNDARY, name, fields[name])).encode()
    for name, data in (("dat_file", b""), ("map_file", map_bytes)):
        body += ("%s\r\nContent-Disposition: form-data; name=\"%s\"; filename=\"%s\"\r\n"
                 "Content-Type: application/octet-stream\r\n\r\n" % (BOUNDARY, name, name + ".bin")).encode()
        body += data + b"\r\n\r\n"
    body += (BOUNDARY + "--\r\n").encode()
    head = ("POST / HTTP/1.1\r\nHost: test\r\nContent-Length: %d\r\nConnection: close\r\n"
            "Content-Type: multipart/form-data; boundary=%s\r\n\r\n" % (len(body), BOUNDARY[2:])).encode()
    return message(raw(port, head + body, timeout))
