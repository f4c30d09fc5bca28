"""Finding the library and the model: argument, environment, install, build tree."""
import glob
import os
import shutil
import subprocess

import pytest

from conftest import BUILD, PYTHON_DIR, run_python

PROBE = ("import vorelin, vorelin._locate as l\n"
         "lib = vorelin.find_library()\n"
         "print(vorelin.__file__); print(lib); print(vorelin.find_model('gbk', lib))\n")


def test_cmake_install_installs_a_package_that_finds_the_installed_files(tmp_path):
    prefix = tmp_path / "prefix"
    subprocess.run([shutil.which("cmake"), "--install", BUILD, "--prefix", str(prefix)], check=True,
                   capture_output=True, timeout=300)
    packages = glob.glob(str(prefix / "lib" / "python3*" / "dist-packages"))
    assert len(packages) == 1, os.listdir(str(prefix / "lib"))
    env = {"PYTHONPATH": packages[0], "VORELIN_LIBRARY": "", "VORELIN_MODEL_DIR": ""}
    run = run_python(PROBE, env=env, cwd=str(tmp_path))
    assert run.returncode == 0, run.stderr
    module, lib, model = run.stdout.decode().splitlines()
    assert module.startswith(packages[0])
    assert os.path.realpath(lib).startswith(str(prefix)) and os.path.isfile(lib)
    assert model == os.path.join(str(prefix), "share", "vorelin", "default", "default_gbk.xml")
    assert os.path.isfile(model)


def test_the_environment_and_the_argument_come_first(tmp_path):
    code = ("import vorelin, sys\nprint(vorelin.find_library(sys.argv[1] or None))\n"
            "print(vorelin.find_model('utf-8', vorelin.find_library()))\n")
    folder = tmp_path / "models"
    folder.mkdir()
    (folder / "default_utf8.xml").write_text("")
    lib = os.environ["VORELIN_LIBRARY"]
    run = run_python(["-c", code, "/explicit/libVorelin.so"], env={"VORELIN_MODEL_DIR": str(folder)})
    assert run.returncode == 1 and b"/explicit/libVorelin.so" in run.stderr
    run = run_python(["-c", code, ""], env={"VORELIN_MODEL_DIR": str(folder)})
    assert run.stdout.decode().splitlines() == [lib, str(folder / "default_utf8.xml")]


def test_a_checkout_falls_back_to_its_build_tree(tmp_path):
    if any(os.path.exists(p) for p in ("/usr/local/lib/libVorelin.so", "/usr/lib/libVorelin.so")):
        pytest.skip("an installed library comes before the build tree here")
    checkout_build = os.path.join(os.path.dirname(PYTHON_DIR), "build")
    if not os.path.isfile(os.path.join(checkout_build, "libVorelin.so")):
        pytest.skip("this checkout has no build/ tree")
    run = run_python(PROBE, env={"VORELIN_LIBRARY": "", "VORELIN_MODEL_DIR": ""}, cwd=str(tmp_path))
    assert run.returncode == 0, run.stderr
    _, lib, model = run.stdout.decode().splitlines()
    assert lib == os.path.join(checkout_build, "libVorelin.so")
    assert model == os.path.join(checkout_build, "models", "default", "default_gbk.xml")
