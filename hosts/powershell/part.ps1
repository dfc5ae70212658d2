# A picture of a part, and a graph of a table: part.ps1 -Model gear.stl -Table oven.csv -Folder C:\Users\Public
# Written without PowerShell at hand: not run.
param(
  [Parameter(Mandatory)] [string] $Model,
  [Parameter(Mandatory)] [string] $Table,
  [Parameter(Mandatory)] [string] $Folder
)
$ErrorActionPreference = 'Stop'

function Save-Part([string] $model, [string] $file) {
  $part = New-Object -ComObject ZYNVue.ZYNGLMaillage
  $part.Charger($model)
  # Colour and opacity; then how much of the ambient, diffuse and specular light it takes.
  $part.setMaterial(0.95, 0.72, 0.3, 1, 0.6, 0.8, 0.3, 0.3, 0)
  $part.StyleRendu = 2 # surfaces and the edges of their form

  $camera = New-Object -ComObject ZYNVue.ZYNCamera
  $camera.setOeil(60, -90, 84)
  $camera.setCible(0, 0, 6)
  $camera.setHaut(0, 0, 1)
  $camera.Largeur = 88
  $camera.Hauteur = 66

  $context = New-Object -ComObject ZYNVue.ZYN3dGLBitmapContext
  $context.LineAntialiasing = $true # before CreateContext
  [void] $context.CreateContext(800, 600)
  $context.DirectionLight1Property = [double[]](1, 1, 1, 1, 0.1, 0.6, 0.3, -0.6, 0.5)
  $context.Add($part, 0)
  $context.Camera = $camera
  $context.Exporter($file)
}

# A table with semicolons and decimal commas, numbers in the first column.
function Save-Graph([string] $table, [string] $file) {
  $rows = Get-Content $table -Encoding UTF8 | ForEach-Object { , $_.Split(';') }
  $names = $rows[0]
  $numbers = @($rows | Select-Object -Skip 1)
  $german = [Globalization.CultureInfo]::GetCultureInfo('de-DE')
  $column = { param($i) [double[]] ($numbers | ForEach-Object { if ($_[$i]) { [double]::Parse($_[$i], $german) } else { [double]::NaN } }) }

  $context = New-Object -ComObject ZYNVue.ZYN2DGLBitmapContext
  [void] $context.CreateContexte(800, 500)
  $context.Graphe.Actif = $true
  $context.Graphe.Axe(0).Titre = $names[0]
  for ($i = 1; $i -lt $names.Count; ++$i) {
    $series = New-Object -ComObject ZYNVue.ZYNSerie
    $series.Nom = $names[$i]
    $series.setPoints((& $column 0), (& $column $i))
    $series.Epaisseur = 2
    [void] $context.Graphe.Ajouter($series)
  }
  $context.Exporter($file)
}

# The current folder of PowerShell is not that of the process: whole paths.
$folder = (Resolve-Path $Folder).Path
Save-Part (Resolve-Path $Model).Path (Join-Path $folder 'part.png')
Save-Graph (Resolve-Path $Table).Path (Join-Path $folder 'graph.png')
'done'
