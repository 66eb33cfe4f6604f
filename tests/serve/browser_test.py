#!/usr/bin/python3
"""The page app of `trellin serve` in Debian's chromium, driven by selenium.

usage: browser_test.py TRELLIN COMPANY

COMPANY is a copy this script may change: two account names become markup, to show that the
page app and the HTML renderer print them as text. Prints "N passed, N failed" and exits 1 on
any failure. With TRELLIN_SCREENSHOTS=FOLDER it leaves screenshots of the catalogue, the form
and a previewed page there.
"""
import json
import os
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time
import urllib.request

from selenium import webdriver
from selenium.common.exceptions import NoAlertPresentException
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.support import expected_conditions as seen
from selenium.webdriver.support.ui import WebDriverWait

SCRIPT = "<script>alert(1)</script>"
IMAGE = '"><img src=x onerror=alert(1)>'

passed, failed = 0, 0


def check(condition, what):
    global passed, failed
    if condition:
        passed += 1
    else:
        failed += 1
        print("FAILED:", what, file=sys.stderr)


def start_server(trellin, company, tmp):
    env = dict(os.environ, TMPDIR=tmp)
    server = subprocess.Popen([trellin, "serve", "--db", company, "--port", "0", "--workers", "2"],
                              stdout=subprocess.PIPE, env=env, text=True)
    line = server.stdout.readline()
    url = line.split()[2]  # "trellin serve: http://127.0.0.1:PORT/ (...)"
    return server, url.rstrip("/")


def browser(downloads):
    options = webdriver.ChromeOptions()
    options.binary_location = "/usr/bin/chromium"
    for arg in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                "--window-size=1400,1000"):
        options.add_argument(arg)
    options.add_experimental_option("prefs", {"download.default_directory": downloads,
                                              "download.prompt_for_download": False})
    driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
    driver.execute_cdp_cmd("Browser.setDownloadBehavior",
                           {"behavior": "allow", "downloadPath": downloads})
    return driver


def no_alert(driver, where):
    try:
        driver.switch_to.alert
        check(False, "an alert opened " + where)
    except NoAlertPresentException:
        check(True, "")
    check(not driver.find_elements(By.CSS_SELECTOR, 'img[src="x"]'), "markup ran " + where)


def shot(driver, name):
    folder = os.environ.get("TRELLIN_SCREENSHOTS")
    if folder:
        driver.save_screenshot(os.path.join(folder, name + ".png"))


def main():
    trellin, company = sys.argv[1], sys.argv[2]
    db = sqlite3.connect(company)
    db.execute("UPDATE Account SET Description = ? WHERE AccountId = '1010'", (SCRIPT,))
    db.execute("UPDATE Account SET Description = ? WHERE AccountId = '1020'", (IMAGE,))
    db.commit()
    db.close()

    with tempfile.TemporaryDirectory() as tmp:
        downloads = os.path.join(tmp, "downloads")
        os.mkdir(downloads)
        server, url = start_server(trellin, company, tmp)
        driver = browser(downloads)
        wait = WebDriverWait(driver, 60)
        try:
            # Find the trial balance by search.
            driver.get(url + "/")
            search = wait.until(seen.element_to_be_clickable((By.ID, "search")))
            wait.until(lambda d: d.find_elements(By.CSS_SELECTOR, "#catalogue a"))
            shot(driver, "catalogue")
            search.send_keys("trial bal")
            links = driver.find_elements(By.CSS_SELECTOR, "#catalogue a")
            keys = [a.get_attribute("data-key") for a in links]
            check("TrialBalance" in keys and all("Trial Balance" in a.text for a in links),
                  "the search finds the trial balances and no other: %s" % keys)
            links[keys.index("TrialBalance")].click()

            # ToDate as an expression, shown with the date it stands for.
            to_date = wait.until(seen.element_to_be_clickable((By.ID, "p-ToDate")))
            to_date.send_keys("EOM-1M")
            hint = driver.find_element(By.CSS_SELECTOR, '.field[data-name="ToDate"] .hint')
            wait.until(lambda d: hint.text.startswith("= "))
            resolved = json.loads(urllib.request.urlopen(urllib.request.Request(
                url + "/api/reports/TrialBalance/resolve", method="POST",
                data=json.dumps({"values": {"ToDate": "EOM-1M"}}).encode())).read())
            day = resolved["values"]["ToDate"]  # yyyy-mm-dd
            check(hint.text.endswith(day[:4]) and hint.text.startswith("= " + str(int(day[8:]))),
                  "ToDate's hint %r shows %s" % (hint.text, day))

            # The pick-list prints the company's names as text.
            driver.find_element(By.CSS_SELECTOR, '.field[data-name="Accounts"] button').click()
            picker = wait.until(seen.visibility_of_element_located(
                (By.CSS_SELECTOR, '.field[data-name="Accounts"] .picker input')))
            picker.send_keys("alert")
            wait.until(lambda d: len(d.find_elements(By.CSS_SELECTOR, ".picker li")) == 2)
            rows = [li.text for li in driver.find_elements(By.CSS_SELECTOR, ".picker li .name")]
            check(rows == [SCRIPT, IMAGE], "the pick-list rows print as text: %r" % rows)
            no_alert(driver, "in the pick-list")
            shot(driver, "form")
            driver.find_element(By.CSS_SELECTOR, '.field[data-name="Accounts"] button').click()

            # Run, page forward, download the PDF.
            driver.find_element(By.ID, "run").click()
            wait.until(seen.visibility_of_element_located((By.ID, "viewer")))
            pages = int(driver.find_element(By.ID, "pages").text)
            check(pages >= 2, "the trial balance has pages to turn: %d" % pages)
            image = driver.find_element(By.ID, "page-image")
            wait.until(lambda d: d.execute_script("return arguments[0].naturalWidth", image) > 0)
            shot(driver, "preview")
            driver.find_element(By.ID, "next").click()
            check(driver.find_element(By.ID, "page").get_attribute("value") == "2", "next page")
            check(image.get_attribute("src").endswith("/pages/2"), "page 2 shown")
            driver.find_element(By.ID, "last").click()
            check(driver.find_element(By.ID, "page").get_attribute("value") == str(pages), "last")
            driver.find_element(By.CSS_SELECTOR, '#downloads a[data-format="pdf"]').click()
            pdf = os.path.join(downloads, "TrialBalance.pdf")
            for _ in range(300):
                if os.path.exists(pdf):
                    break
                time.sleep(0.1)
            check(os.path.exists(pdf) and open(pdf, "rb").read(5) == b"%PDF-", "the PDF downloads")
            no_alert(driver, "after the run")

            # The HTML renderer escapes the same names.
            run_id = driver.execute_script("return state.run.id")
            html = urllib.request.urlopen(url + "/api/runs/%s/files/html" % run_id).read().decode()
            check("&lt;script&gt;alert(1)&lt;/script&gt;" in html and SCRIPT not in html,
                  "the HTML file escapes markup in names")
            check("<img src=x" not in html, "the HTML file holds no image markup from a name")

            # A bad value is shown plainly.
            driver.find_element(By.CSS_SELECTOR, "#form-box summary").click()
            to_date.clear()
            to_date.send_keys("31/02/2025")
            driver.find_element(By.ID, "run").click()
            error = wait.until(seen.visibility_of_element_located((By.ID, "error")))
            check(error.text.startswith("To Date:"), "a bad date is named: %r" % error.text)
        finally:
            driver.quit()
            server.send_signal(signal.SIGTERM)
            check(server.wait(timeout=60) == 0, "the server stops cleanly")
            check(os.listdir(tmp) == ["downloads"], "the server leaves no files: %s" % os.listdir(tmp))
    print("%d passed, %d failed" % (passed, failed))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
