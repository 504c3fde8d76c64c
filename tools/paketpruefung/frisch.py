"""Fresh Debian systems, made by mmdebstrap from the archives that this machine's apt knows."""

import contextlib
import os
import subprocess

from .bericht import rufe, umgebung


def quellen():
    """Debian's archives as this machine's apt knows them, one line each; it is asked to look when it knows none."""
    form = "deb $(REPO_URI) $(RELEASE) $(COMPONENT)"
    for versuch in range(2):
        zeilen = rufe("apt-get", "indextargets", "--format", form, "Created-By: Packages", "Origin: Debian").stdout.splitlines()
        archive = sorted({zeile for zeile in zeilen if zeile.startswith("deb ")})
        if archive or versuch > 0 or os.geteuid() != 0:
            return archive
        with contextlib.suppress(subprocess.TimeoutExpired):
            rufe("apt-get", "update", timeout=120)
    return []


def warum_nicht(archive, ablage):
    """Why no fresh system can be made here; empty when one can."""
    if os.geteuid() != 0:
        return "only root can change into one"
    if rufe("unshare", "--mount", "--pid", "--fork", "true").returncode != 0:
        return "mounting is not allowed here"
    if not archive:
        return "apt has no list of Debian's packages (apt-get update)"
    _, adresse, name, _ = archive[0].split()
    probe = os.path.join(ablage, "InRelease")
    with contextlib.suppress(subprocess.TimeoutExpired):
        rufe("/usr/lib/apt/apt-helper", "download-file", f"{adresse}dists/{name}/InRelease", probe, timeout=30)
    return "" if os.path.exists(probe) else "the mirror does not answer"


def ausgabe(archive):
    """The release that these archives are of."""
    return min((zeile.split()[2] for zeile in archive), key=len)  # not its updates


def andere(archive, name):
    """The same archives of another release."""
    hier = ausgabe(archive)
    return [" ".join([art, adresse, wort.replace(hier, name), teil]) for art, adresse, wort, teil in map(str.split, archive)]


def baue(ort, name, archive, umfang, pakete):
    """A Debian of that release with the packages of mmdebstrap's variant `umfang` and these; whether it could be made,
    and what was said."""
    lauf = subprocess.run(
        ["mmdebstrap", "--quiet", "--variant=" + umfang, "--mode=root", "--dpkgopt=force-unsafe-io",
         '--aptopt=APT::Install-Recommends "false"', "--include=" + ",".join(sorted(pakete)), name, ort, "-"],
        input="\n".join(archive) + "\n", text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, env=umgebung(), timeout=600)
    return lauf.returncode == 0, lauf.stdout
