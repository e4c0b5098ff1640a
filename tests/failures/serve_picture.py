"""serve_picture.py FILE - answers every request with the file, as a proxy on the loopback would that
reaches the maker's site. Prints its port; ends when its standard input does."""
import http.server
import sys
import threading

picture = open(sys.argv[1], "rb").read()


class Handler(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        self.send_response(200)
        self.send_header("Content-Length", str(len(picture)))
        self.end_headers()
        self.wfile.write(picture)

    def log_message(self, *_):
        pass


server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
threading.Thread(target=server.serve_forever, daemon=True).start()
print(server.server_port, flush=True)
sys.stdin.read()
