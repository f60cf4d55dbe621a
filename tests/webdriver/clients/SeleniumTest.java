// Selenium's client for Java on keepassxc, and on a page in falkon.
//   TARNI: the tool
import java.net.URL;
import java.nio.file.Path;
import java.time.Duration;
import java.util.List;
import java.util.Map;
import org.openqa.selenium.*;
import org.openqa.selenium.interactions.Actions;
import org.openqa.selenium.remote.RemoteWebDriver;
import org.openqa.selenium.support.ui.ExpectedConditions;
import org.openqa.selenium.support.ui.Select;
import org.openqa.selenium.support.ui.WebDriverWait;

public class SeleniumTest {
  static RemoteWebDriver driver;
  static WebDriverWait patience;

  public static void main(String[] none) throws Exception {
    var server = new ProcessBuilder(System.getenv("TARNI"), "webdriver", "--port", "0")
        .redirectError(ProcessBuilder.Redirect.INHERIT).start();
    try {
      var address = new URL(server.inputReader().readLine());
      run(address, Map.of("appium:app", "keepassxc"), SeleniumTest::aDatabaseIsMadeStepByStep);
      var page = Path.of("../../../samples/web/pages/form.html").toRealPath().toString();
      run(address,
          Map.of("appium:app", "falkon",
              "appium:arguments", List.of("--no-remote", "--private-browsing", page),
              "appium:environment", Map.of("QTWEBENGINE_DISABLE_SANDBOX", "1", "QT_QUICK_BACKEND", "software"),
              "appium:autoWebview", true),
          SeleniumTest::aPageIsFilledIn);
    } finally {
      server.destroy();
      server.waitFor();
    }
  }

  static void run(URL address, Map<String, ?> wanted, Runnable test) {
    var capabilities = new MutableCapabilities(wanted);
    capabilities.setCapability("platformName", "linux");
    driver = new RemoteWebDriver(address, capabilities);
    patience = new WebDriverWait(driver, Duration.ofSeconds(30));
    try {
      test.run();
    } finally {
      driver.quit();
    }
  }

  static WebElement clickable(By by) {
    return patience.until(ExpectedConditions.elementToBeClickable(by));
  }

  static void aDatabaseIsMadeStepByStep() {
    clickable(By.partialLinkText("Create new database")).click();
    var name = clickable(By.id("databaseName"));
    name.clear();
    name.sendKeys("Grace’s");
    check("Grace’s", name.getAttribute("value"));
    check("iVBORw0KGgo", driver.getScreenshotAs(OutputType.BASE64).substring(0, 11));
    check(true, driver.getPageSource().contains("<UIApplication>"));
    driver.findElement(By.xpath("//UIButton[@text='Continue']")).click();

    var slider = clickable(By.cssSelector("#decryptionTimeSlider"));
    new Actions(driver).dragAndDropBy(slider.findElement(By.name("Handle")), 120, 0).perform();
    patience.until(any -> Integer.parseInt(slider.getAttribute("value")) > 10);
    var format = By.id("compatibilitySelection");
    driver.findElement(format).click();
    clickable(By.xpath("//*[starts-with(@text, 'KDBX 3')]")).click();
    patience.until(ExpectedConditions.textToBePresentInElementLocated(format, "KDBX 3"));
    driver.findElement(By.linkText("Continue")).click();

    clickable(By.linkText("Done")).click();
    patience.until(any -> driver.switchTo().alert().getText().contains("without a password?"));
    driver.switchTo().alert().dismiss();
    clickable(By.xpath("(//*[@text='Cancel' and @visible='true'])[last()]")).click();
    patience.until(ExpectedConditions.stalenessOf(name));
  }

  static void aPageIsFilledIn() {
    clickable(By.name("customer")).sendKeys("Grace");
    var colour = driver.findElement(By.name("colour"));
    new Select(colour).selectByVisibleText("Blue");
    check("Blue", driver.executeScript("return arguments[0].value", colour));
    driver.findElement(By.xpath("//button[text()='Ask']")).click();
    check("Really?", driver.switchTo().alert().getText());
    driver.switchTo().alert().accept();
    check("alert closed", driver.findElement(By.id("said")).getText());
  }

  static void check(Object wanted, Object is) {
    if (!wanted.equals(is)) throw new AssertionError("\"" + is + "\" is not \"" + wanted + "\"");
  }
}
