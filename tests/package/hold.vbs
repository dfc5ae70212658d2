' Holds an object of each library as long as the file that is its argument exists; a file whose name ends in "ing" says
' that it does. Wine's script host cannot sleep.
Set files = CreateObject("Scripting.FileSystemObject")
path = WScript.Arguments(0)
Set triangle = CreateObject("ZYNVue.ZYNGLTriangle")
Set box = CreateObject("ZYNModeleGeom.Box3D")
files.CreateTextFile(path & "ing").Close
Do While files.FileExists(path)
Loop
