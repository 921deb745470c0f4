"""A PostgreSQL server of one's own, from Debian's package, as an unprivileged user."""
import glob
import os
import pwd
import shutil
import subprocess


def programs():
    """The folder of the newest server's programs; None where there is none to start."""
    folders = sorted(glob.glob("/usr/lib/postgresql/*/bin"))
    return folders[-1] if folders and shutil.which("psql") else None


class Server:
    """A server in a new subfolder of a temporary folder, reached through a socket there alone."""

    def __init__(self, temporary):
        self.folder = os.path.join(temporary, "server")
        os.mkdir(self.folder)
        os.chmod(temporary, 0o755)
        root = os.geteuid() == 0
        self.user = "postgres" if root and any(u.pw_name == "postgres" for u in pwd.getpwall()) else "nobody"
        self.owner = {"user": self.user} if root else {}
        self.name = self.user if root else pwd.getpwuid(os.geteuid()).pw_name
        if root:
            shutil.chown(self.folder, self.user)
        self.connection = f"host={self.folder} user={self.name} dbname=postgres"

    def __enter__(self):
        data = os.path.join(self.folder, "data")
        self.control("initdb", "-D", data, "--auth=trust", "--no-sync", "--locale=C", "--encoding=UTF8")
        self.control("pg_ctl", "-D", data, "-w", "-l", os.path.join(self.folder, "log"), "start",
                     "-o", f"-c listen_addresses='' -c fsync=off -k {self.folder}")
        return self

    def __exit__(self, *_):
        self.control("pg_ctl", "-D", os.path.join(self.folder, "data"), "-m", "immediate", "stop")

    def control(self, program, *arguments):
        subprocess.run([os.path.join(programs(), program), *arguments], cwd=self.folder, check=True,
                       stdout=subprocess.DEVNULL, **self.owner)

    def sql(self, text):
        return subprocess.run(["psql", "-XqAt", "-v", "ON_ERROR_STOP=1", self.connection], input=text, text=True,
                              check=True, capture_output=True).stdout.strip()
