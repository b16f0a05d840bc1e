"""A web server of the test's own."""

import http.server
import threading


class WebServer:
    """Serves at `endpoint` as long as its `with` block lasts."""

    def __init__(self):
        server = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                server.answer(self)

            def log_message(self, *_):
                pass

        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.endpoint = "http://127.0.0.1:%d" % self._server.server_port

    def answer(self, request):
        """Answers a request, which is its `BaseHTTPRequestHandler`, on a thread of its own."""
        raise NotImplementedError

    def __enter__(self):
        threading.Thread(target=self._server.serve_forever, daemon=True).start()
        return self

    def __exit__(self, *_):
        self._server.shutdown()
        self._server.server_close()
