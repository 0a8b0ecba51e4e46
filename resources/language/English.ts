<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>CommonFramelessTitleBar</name>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>向下还原</source>
        <translation>Restore</translation>
    </message>
    <message>
        <source>最大化</source>
        <translation>Maximize</translation>
    </message>
    <message>
        <source>最小化</source>
        <translation>Minimize</translation>
    </message>
    <message>
        <source>窗口图标</source>
        <translation>Window icon</translation>
    </message>
</context>
<context>
    <name>ExtraOptionWidget</name>
    <message>
        <source>Form</source>
        <translation>Form</translation>
    </message>
    <message>
        <source>RIP后手动打印</source>
        <translation>Manual print after RIP</translation>
    </message>
    <message>
        <source>RIP后自动打印</source>
        <translation>Automatic print after RIP</translation>
    </message>
    <message>
        <source>打印模式</source>
        <translation>Print mode</translation>
    </message>
    <message>
        <source>边RIP边打印</source>
        <translation>Print while RIP</translation>
    </message>
    <message>
        <source>镜像打印</source>
        <translation>Mirror print</translation>
    </message>
</context>
<context>
    <name>InkOrderWidget</name>
    <message>
        <source>墨水顺序</source>
        <translation>Ink order</translation>
    </message>
</context>
<context>
    <name>InstallPrinterDriverDlg</name>
    <message>
        <source> (已安装)</source>
        <translation> (Installed)</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>安装</source>
        <translation>Install</translation>
    </message>
    <message>
        <source>安装失败</source>
        <translation>Installation failure</translation>
    </message>
    <message>
        <source>安装打印机</source>
        <translation>Install printer</translation>
    </message>
    <message>
        <source>打印机列表</source>
        <translation>List of printers</translation>
    </message>
    <message>
        <source>温馨提示</source>
        <translation>Reminder</translation>
    </message>
    <message>
        <source>生产商列表</source>
        <translation>List of manufacturers</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>确认删除驱动&quot;%1&quot;吗?</source>
        <translation>Are you sure to delete the driver &quot;%1&quot;?</translation>
    </message>
</context>
<context>
    <name>ModifyPrinterDriverNameDlg</name>
    <message>
        <source>修改打印机名</source>
        <translation>Modify printer name</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>打印机名</source>
        <translation>Printer Name</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>清除</source>
        <translation>Clear</translation>
    </message>
</context>
<context>
    <name>PrinterDriverManagerDlg</name>
    <message>
        <source> (默认)</source>
        <translation> (Default)</translation>
    </message>
    <message>
        <source>修改打印机名</source>
        <translation>Modify printer name</translation>
    </message>
    <message>
        <source>删除打印机</source>
        <translation>Delete printer</translation>
    </message>
    <message>
        <source>安装打印机</source>
        <translation>Install printer</translation>
    </message>
    <message>
        <source>安装自定义打印机</source>
        <translation>Install customized printer</translation>
    </message>
    <message>
        <source>导入打印机</source>
        <translation>Import printer</translation>
    </message>
    <message>
        <source>导出打印机</source>
        <translation>Export printer</translation>
    </message>
    <message>
        <source>已安装的打印机</source>
        <translation>Installed printer</translation>
    </message>
    <message>
        <source>打印机 (*.bex_driver)</source>
        <translation>Printer (*.bex_driver)</translation>
    </message>
    <message>
        <source>打印机名称修改失败</source>
        <translation>Failed to change the printer name</translation>
    </message>
    <message>
        <source>打印机属性</source>
        <translation>Property</translation>
    </message>
    <message>
        <source>打印机管理</source>
        <translation>Printer management</translation>
    </message>
    <message>
        <source>温馨提示</source>
        <translation>Reminder</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>Confirm</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>自定义打印机</source>
        <translation>Customize printer</translation>
    </message>
    <message>
        <source>设置为默认</source>
        <translation>Set as default</translation>
    </message>
    <message>
        <source>设置默认打印机失败</source>
        <translation>Default printer loading failure</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>Quit</translation>
    </message>
    <message>
        <source>驱动安装失败</source>
        <translation>Failed to install driver</translation>
    </message>
    <message>
        <source>驱动导入失败</source>
        <translation>Failed to import driver</translation>
    </message>
    <message>
        <source>驱动导出失败</source>
        <translation>Failed to export driver</translation>
    </message>
</context>
<context>
    <name>PrinterDriverPropertyDlg</name>
    <message>
        <source>
(选择取消,将会将icc文件名改为&quot;%2&quot;)</source>
        <translation>
(Select cancel, icc file rename as &quot;%2&quot;)</translation>
    </message>
    <message>
        <source>&quot;%1&quot;已经存在.是否覆盖?</source>
        <translation>&quot;%1&quot;existed, cover or not?</translation>
    </message>
    <message>
        <source>CMYK</source>
        <translation>CMYK</translation>
    </message>
    <message>
        <source>ICC设置</source>
        <translation>ICC settings</translation>
    </message>
    <message>
        <source>RGB</source>
        <translation>RGB</translation>
    </message>
    <message>
        <source>icc (*.icc *.icm)</source>
        <translation>icc (*.icc *.icm)</translation>
    </message>
    <message>
        <source>下次不再询问</source>
        <translation>Never ask again</translation>
    </message>
    <message>
        <source>其他属性</source>
        <translation>Other Properties</translation>
    </message>
    <message>
        <source>其他选项</source>
        <translation>Ohter options</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>品红(M)</source>
        <translation>M</translation>
    </message>
    <message>
        <source>墨水</source>
        <translation>Ink</translation>
    </message>
    <message>
        <source>墨水设置</source>
        <translation>Ink settings</translation>
    </message>
    <message>
        <source>属性设置失败</source>
        <translation>Property setting failure</translation>
    </message>
    <message>
        <source>意图</source>
        <translation>Intent</translation>
    </message>
    <message>
        <source>感性</source>
        <translation>Perceptual</translation>
    </message>
    <message>
        <source>打印机属性</source>
        <translation>Property</translation>
    </message>
    <message>
        <source>打印机驱动 - </source>
        <translation>Driver - </translation>
    </message>
    <message>
        <source>打印精度</source>
        <translation>Resolution</translation>
    </message>
    <message>
        <source>拷贝icc失败</source>
        <translation>Copy icc failure</translation>
    </message>
    <message>
        <source>最大墨量</source>
        <translation>Maximum ink</translation>
    </message>
    <message>
        <source>校色模式</source>
        <translation>Colour correction pattern</translation>
    </message>
    <message>
        <source>浓度</source>
        <translation>Density</translation>
    </message>
    <message>
        <source>温馨提示</source>
        <translation>Reminder</translation>
    </message>
    <message>
        <source>相对色</source>
        <translation>Relative colorimetric</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>Confirm</translation>
    </message>
    <message>
        <source>纸张</source>
        <translation>Media</translation>
    </message>
    <message>
        <source>组合类型</source>
        <translation>Combination</translation>
    </message>
    <message>
        <source>绝对色</source>
        <translation>Absolute colorimetric</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Equipment</translation>
    </message>
    <message>
        <source>请选择icc (CMYK)</source>
        <translation>icc (CMYK)</translation>
    </message>
    <message>
        <source>请选择icc (RGB)</source>
        <translation>icc (RGB)</translation>
    </message>
    <message>
        <source>请选择设备曲线</source>
        <translation>Select equipment icc</translation>
    </message>
    <message>
        <source>载入设备曲线...</source>
        <translation>Loading Equipment icc...</translation>
    </message>
    <message>
        <source>选择</source>
        <translation>Select</translation>
    </message>
    <message>
        <source>青色(C)</source>
        <translation>C</translation>
    </message>
    <message>
        <source>饱和度</source>
        <translation>Saturation</translation>
    </message>
    <message>
        <source>黄色(Y)</source>
        <translation>Y</translation>
    </message>
    <message>
        <source>黑色(K)</source>
        <translation>K</translation>
    </message>
    <message>
        <source>%1 浓度</source>
        <translation>%1 density</translation>
    </message>
    <message>
        <source>%1 最大墨量</source>
        <translation>%1 maximum ink</translation>
    </message>
    <message>
        <source>RGB 配置文件</source>
        <translation>RGB profile</translation>
    </message>
    <message>
        <source>CMYK 配置文件</source>
        <translation>CMYK profile</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>否</source>
        <translation>No</translation>
    </message>
    <message>
        <source>如果继续安装，将会覆盖以下文件:</source>
        <translation>Continue to install, files will be covered:</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>是否继续？</source>
        <translation>Continue or not?</translation>
    </message>
    <message>
        <source>温馨提示</source>
        <translation>Reminder</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>Bex</source>
        <translation>Bex</translation>
    </message>
    <message>
        <source>请选择默认打印机</source>
        <translation>Select default printer</translation>
    </message>
</context>
</TS>
