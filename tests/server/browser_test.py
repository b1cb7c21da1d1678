#!/usr/bin/python3
"""The gallery in a real browser: headless Chromium (through Selenium and chromium-driver) loads
the page, sees every shared map, and follows a download link. (The thumbnails the page links are
decoded and compared with stored pictures by the server's own Gallery test.)
Usage: browser_test.py BUILD_DIR"""
import os
import shutil
import sys
import tempfile
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import game_client as game  # noqa: E402
import server_process  # noqa: E402

from selenium import webdriver  # noqa: E402
from selenium.webdriver.chrome.service import Service  # noqa: E402
from selenium.webdriver.common.by import By  # noqa: E402


def main():
    build = sys.argv[1]
    root = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
    data = tempfile.mkdtemp(prefix="qm-browser-")
    downloads = tempfile.mkdtemp(prefix="qm-downloads-")
    server = server_process.Server(server_process.binary_path(build), data,
                                   assets=os.path.join(root, "Assets")).start()
    failures = []
    driver = None
    try:
        maps = {}
        for k, (name, size) in enumerate([("Tall <Tower>", 64), ("Fire & Ice", 32), ("Jump", 64)]):
            user = game.register(server.port, "Player%d" % k)
            data_bytes = server_process.plain_map(name, 1000 + k, k, size)
            assert game.upload(server.port, user, 1, data_bytes) == "POSTMAP1"
            maps[name] = data_bytes

        options = webdriver.ChromeOptions()
        for arg in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                    "--window-size=420,900"):
            options.add_argument(arg)
        options.add_experimental_option("prefs", {"download.default_directory": downloads,
                                                  "download.prompt_for_download": False})
        driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
        driver.set_page_load_timeout(30)
        driver.get("http://127.0.0.1:%d/" % server.port)
        items = driver.find_elements(By.CSS_SELECTOR, "li.map")
        shown = {item.find_element(By.CSS_SELECTOR, ".name").text: item for item in items}
        if set(shown) != set(maps):
            failures.append("page shows %s, expected %s" % (sorted(shown), sorted(maps)))
        link = shown["Fire & Ice"].find_element(By.CSS_SELECTOR, "a.download")
        link.click()
        target = os.path.join(downloads, "Fire_Ice.map")
        deadline = time.time() + 15
        while time.time() < deadline and not os.path.exists(target):
            time.sleep(0.1)
        time.sleep(0.3)
        if not os.path.exists(target):
            failures.append("download did not arrive: %s" % os.listdir(downloads))
        elif open(target, "rb").read() != maps["Fire & Ice"]:
            failures.append("downloaded map differs from the upload")
    finally:
        if driver:
            driver.quit()
        server.stop()
        shutil.rmtree(data, ignore_errors=True)
        shutil.rmtree(downloads, ignore_errors=True)
    for f in failures:
        print("FAIL:", f)
    print("browser test: %d maps, %s" % (3, "ok" if not failures else "failed"))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
