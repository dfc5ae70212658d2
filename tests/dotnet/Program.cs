// Tests of ZYNVue.Interop, with the library registered (./zyn hosts csharp).
using System;

internal static class Program {
  [STAThread]
  private static int Main() {
    int failures = 0;
    void Fail(string what) {
      ++failures;
      Console.WriteLine("FAILED: " + what);
    }
    new TypeLibraryCheck(Fail).Run();
    new EventsCheck(Fail).Run();
    OwnObjectCheck.Run(Fail);
    Console.WriteLine(failures + " failures");
    return failures == 0 ? 0 : 1;
  }
}
